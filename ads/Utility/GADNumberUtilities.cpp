#include "ads/Utility/GADNumberUtilities.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace vistrel {

std::string GADNumberUtilities::stringWithFloat(float number) {
    std::array<char, 64> buffer{};
    const int size = std::snprintf(buffer.data(), buffer.size(), "%f", static_cast<double>(number));
    std::string_view text(buffer.data(), static_cast<std::size_t>(size));
    // Infinity has no decimals to remove.
    if (text.find('.') == std::string_view::npos)
        return std::string(text);
    text = text.substr(0, text.find_last_not_of('0') + 1);
    if (text.ends_with('.'))
        text.remove_suffix(1);
    return std::string(text);
}

int GADNumberUtilities::integerWithString(std::string_view text) {
    const auto begin = text.find_first_not_of(" \t\n\r\f\v");
    if (begin == std::string_view::npos)
        return 0;
    text.remove_prefix(begin);
    const bool negative = text[0] == '-';
    if (negative || text[0] == '+')
        text.remove_prefix(1);
    std::int64_t number = 0;
    for (const char character : text) {
        if (character < '0' || character > '9' || number > std::numeric_limits<int>::max())
            break;
        number = number * 10 + (character - '0');
    }
    return saturated<int>(static_cast<double>(negative ? -number : number));
}

float GADNumberUtilities::floatWithString(std::string_view text) {
    const auto begin = text.find_first_not_of(" \t\n\r\f\v");
    if (begin == std::string_view::npos)
        return 0;
    text.remove_prefix(begin);
    if (text[0] == '+')
        text.remove_prefix(1);
    float number = 0;
    const auto result =
        std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::general);
    return result.ec == std::errc() && std::isfinite(number) ? number : 0;
}

}
