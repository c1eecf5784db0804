#include "demo/Page.h"
#include "demo/Pages.h"
#include "demo/PartnerSites.h"

namespace vistrel::demo {
namespace {
const PartnerSite* partnerAt(std::string_view path) {
    for (size_t index = 0; index < partnerSites.size(); ++index) {
        if (path.starts_with("/partner/" + std::to_string(index + 1) + "/"))
            return &partnerSites[index];
    }
    return nullptr;
}
}

Answer partnerPage(Site& /*site*/, const Request& request) {
    const PartnerSite* partner = partnerAt(request.path);
    if (partner == nullptr || !request.path.ends_with('/'))
        return errorAnswer(404, "No partner site lives here.");
    Page page(partner->name);
    page.paragraph(partner->line).section("Tonight");
    int number = 1;
    for (const PartnerSite::Item& item : partner->items) {
        const std::string name = std::string(item.fileStem) + "-" + std::to_string(number++);
        page.link("/files/" + name + std::string(item.extension), item.title, item.note);
    }
    page.section("Friends").link("/", "All pages of this demo");
    return page.answer();
}

Addresses partnerAddresses() {
    Addresses addresses;
    for (size_t index = 0; index < partnerSites.size(); ++index)
        addresses.push_back(
            {"/partner/" + std::to_string(index + 1) + "/", std::string(partnerSites[index].name)});
    return addresses;
}
}
