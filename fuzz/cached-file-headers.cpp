#include "ads/Network/GADCachedFilePath.h"
#include "ads/Network/GADHTTPDate.h"
#include "fuzz/Check.h"

#include <cstdint>
#include <string>

namespace {
using namespace vistrel;

void checkDate(std::string_view text) {
    const auto seconds = GADHTTPDate::secondsWithString(text);
    if (!seconds)
        return;
    const std::string written = GADHTTPDate::stringWithSeconds(*seconds);
    fuzz::check(GADHTTPDate::secondsWithString(written) == seconds, "a moment survives");
    fuzz::check(GADHTTPDate::secondsWithString(written + " ") == seconds, "with a blank as well");
}

void checkPath(std::string_view address) {
    const auto url = NSURL::URLWithString(address);
    if (!url)
        return;
    const std::string path = gadCachedFilePath(*url);
    const std::string caches = std::string(kGADCachesDirectory) + "/";
    fuzz::check(path.starts_with(caches), "the path begins in the caches");
    const std::string_view inside = std::string_view(path).substr(caches.size());
    const auto slash = inside.find('/');
    fuzz::check(slash != std::string_view::npos &&
                    inside.find('/', slash + 1) == std::string_view::npos,
                "a folder and a file, no more");
    const std::string_view folder = inside.substr(0, slash);
    fuzz::check(!folder.empty() && folder != "." && folder != ".." && folder.size() <= 255,
                "the folder is a plain name");
    const std::string_view name = inside.substr(slash + 1);
    fuzz::check(!name.empty() &&
                    name.find_first_not_of("0123456789abcdef") == std::string_view::npos,
                "the file is a number");
}
}

/// Dates that a server sends, and addresses that name a cached file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    checkDate(text);
    checkDate(text.substr(0, text.find("GMT")));
    checkPath(text);
    checkPath("http://" + std::string(text));
    return 0;
}
