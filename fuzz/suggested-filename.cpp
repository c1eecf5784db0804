#include "platform/foundation/SuggestedFilename.h"

#include "fuzz/Check.h"
#include "platform/foundation/UTF8Text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {
using namespace vistrel;

void checkPlain(const std::string& name) {
    fuzz::check(!name.empty() && name.size() <= 255, "a name has 1 to 255 bytes");
    fuzz::check(name.front() != '.', "a name is neither hidden nor a step");
    fuzz::check(name.find_first_of(std::string_view("/\\\0", 3)) == std::string::npos,
                "a name has no separators");
    fuzz::check(
        std::ranges::none_of(name, [](unsigned char byte) { return byte < 0x20 || byte == 0x7F; }),
        "a name has no control characters");
    fuzz::check(isUTF8(name), "a name is UTF-8");
    fuzz::check(plainFilename(name) == name, "cleaning twice changes nothing");
}
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    checkPlain(plainFilename(text));
    const auto half = text.find('\n');
    const std::string_view header = text.substr(0, half);
    const std::string_view url =
        half == std::string_view::npos ? "http://host/path/file.mp4" : text.substr(half + 1);
    for (const char* type :
         {"video/mp4", "audio/mpeg", "text/html", "application/octet-stream", ""})
        checkPlain(suggestedFilename(header, url, type));
    return 0;
}
