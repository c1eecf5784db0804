#include "demo/MediaStore.h"
#include "demo/Page.h"
#include "demo/Pages.h"
#include "settings/Settings.h"

namespace vistrel::demo {

Answer musicPage(Site& /*site*/, const Request& /*request*/) {
    Page page("Music");
    page.paragraph("Tap a song to stream or download it.").section("Songs");
    for (const MediaFile& file : mediaFiles())
        if (file.type == "audio/mpeg")
            page.link("/media/" + std::string(file.name), file.title, file.note);
    page.section("Albums");
    for (int side = 1; side <= 3; ++side) {
        const std::string number = std::to_string(side);
        page.linkInNewWindow("/files/evening-programme-" + number + ".mp3",
                             "Evening Programme, Part " + number);
    }
    page.section("More music")
        .link("/partner/7/", kPartnerSites[6].title.defaultValue)
        .link("/partner/8/", kPartnerSites[7].title.defaultValue);
    return page.answer();
}
}
