#include "demo/Page.h"
#include "demo/Pages.h"
#include "demo/Site.h"

namespace vistrel::demo {
namespace {
std::string_view lastSegment(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}
}

Answer mediaPage(Site& /*site*/, const Request& /*request*/) {
    Page page("Media");
    for (const MediaFile& file : mediaFiles())
        page.link("/media/" + std::string(file.name), file.title,
                  std::string(file.note) + " · " + std::string(file.type));
    return page.answer();
}

Answer mediaFile(Site& site, const Request& request) {
    return site.media.file(lastSegment(request.path));
}

Answer episodeFile(Site& site, const Request& request) {
    return site.media.episode(lastSegment(request.path));
}

Addresses mediaAddresses() {
    Addresses addresses;
    for (const MediaFile& file : mediaFiles())
        addresses.push_back({"/media/" + std::string(file.name),
                             std::string(file.title) + " (" + std::string(file.type) + ")"});
    return addresses;
}

Answer framesPage(Site& /*site*/, const Request& /*request*/) {
    Page page("Frames");
    page.paragraph("Two frames, each with a film.")
        .html(R"(<iframe src="/files/left-frame-1.mp4" title="Left"></iframe>)")
        .html(R"(<iframe src="/files/right-frame-1.m4v" title="Right"></iframe>)");
    return page.answer();
}
}
