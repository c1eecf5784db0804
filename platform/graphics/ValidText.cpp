#include "platform/graphics/ValidText.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace vistrel {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

/// Bytes of the well-formed character at the start of `text`; 0 when there is none.
std::size_t characterLength(std::string_view text) {
    const auto at = [&](std::size_t i) {
        return static_cast<std::uint32_t>(text[i]) & 0xFFU;
    };
    const std::uint32_t lead = at(0);
    if (lead < 0x80)
        return 1;
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length)
        return 0;
    std::uint32_t code = lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((at(i) & 0xC0U) != 0x80)
            return 0;
        code = code << 6 | (at(i) & 0x3FU);
    }
    constexpr std::array<std::uint32_t, 5> least = {0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    return code >= least[length] && code <= 0x10FFFF && !isSurrogate ? length : 0;
}

}

std::string validText(std::string_view text) {
    std::string valid;
    valid.reserve(text.size());
    while (!text.empty()) {
        const auto length = characterLength(text);
        valid += length > 0 ? text.substr(0, length) : kReplacement;
        text.remove_prefix(length > 0 ? length : 1);
    }
    return valid;
}

}
