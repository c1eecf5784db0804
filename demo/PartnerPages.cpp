#include "demo/PartnerSites.h"

#include "demo/Page.h"
#include "demo/Pages.h"
#include "settings/Settings.h"

namespace vistrel::demo {
namespace {
static_assert(partnerContents.size() == kPartnerSites.size());

std::string addressOf(size_t index) {
    return "/partner/" + std::to_string(index + 1) + "/";
}

std::string_view noteFor(std::string_view extension) {
    return extension == ".mp3" ? "Music, MP3" : extension == ".m4v" ? "Film, M4V" : "Film, MP4";
}

Answer pageOf(size_t index) {
    const PartnerContents& contents = partnerContents[index];
    Page page(kPartnerSites[index].title.defaultValue);
    page.paragraph(contents.line).section("Tonight");
    const std::string stem = "/files/partner" + std::to_string(index + 1) + "-";
    int number = 1;
    for (const PartnerContents::Item& item : contents.items) {
        // Each site's second file is sent slowly, so that progress can be watched.
        const char* line = number == 2 ? "?slow=400" : "";
        page.link(stem + std::to_string(number++) + std::string(item.extension) + line, item.title,
                  noteFor(item.extension));
    }
    page.section("Friends");
    const size_t next = (index + 1) % partnerContents.size();
    page.link(addressOf(next), kPartnerSites[next].title.defaultValue);
    return page.answer();
}
}

Answer partnerPage(Site& /*site*/, const Request& request) {
    for (size_t index = 0; index < partnerContents.size(); ++index)
        if (request.path == addressOf(index))
            return pageOf(index);
    return errorAnswer(404, "No such partner site.");
}

Addresses partnerAddresses() {
    Addresses addresses;
    for (size_t index = 0; index < partnerContents.size(); ++index)
        addresses.push_back({addressOf(index), kPartnerSites[index].title.defaultValue});
    return addresses;
}
}
