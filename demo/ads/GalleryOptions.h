#pragma once
#include <optional>
#include <span>
#include <string>

namespace vistrel::demo {

/// What the gallery's command line asks for.
struct GalleryOptions {
    std::string ad;     ///< file or address of an ad's page to show first; empty: none
    std::string server; ///< an ad server; empty: one is started
    bool help = false;
    bool version = false;

    bool isAdAddress() const { return ad.starts_with("http://") || ad.starts_with("https://"); }
};

/// None when something is wrong; `complaint` then says what in one line.
std::optional<GalleryOptions> parseGalleryOptions(std::span<char* const> arguments,
                                                  std::string& complaint);
std::string galleryHelpText();

}
