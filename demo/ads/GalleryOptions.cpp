#include "demo/ads/GalleryOptions.h"

#include <string_view>
#include <unistd.h>

namespace vistrel::demo {

std::optional<GalleryOptions> parseGalleryOptions(std::span<char* const> arguments,
                                                  std::string& complaint) {
    GalleryOptions options;
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const std::string_view option = arguments[index];
        if (option == "--help") {
            options.help = true;
        } else if (option == "--version") {
            options.version = true;
        } else if (option == "--ad" || option == "--server") {
            if (index + 1 == arguments.size()) {
                complaint = std::string(option) + " needs a value";
                return std::nullopt;
            }
            (option == "--ad" ? options.ad : options.server) = arguments[++index];
        } else {
            complaint = "unknown option " + std::string(option);
            return std::nullopt;
        }
    }
    const bool isFile = !options.ad.empty() && !options.isAdAddress();
    if (isFile && !options.server.empty()) {
        complaint = "--ad with a file needs the gallery's own ad server, without --server";
        return std::nullopt;
    }
    if (isFile && access(options.ad.c_str(), R_OK) != 0) {
        complaint = options.ad + " cannot be read";
        return std::nullopt;
    }
    return options;
}

std::string galleryHelpText() {
    return R"(Usage: vistrel-ad-gallery [OPTION...]
Shows every kind of ad of the demo's ad server, one row each.

  --ad FILE-OR-URL  show this page as a banner first; a file is read again each time
  --server URL      use this ad server instead of starting one; not with --ad FILE
  --help            print this and exit
  --version         print the version and exit
)";
}

}
