#pragma once
#include <string>
#include <string_view>

namespace vistrel {
inline constexpr std::string_view kUpperHexDigits = "0123456789ABCDEF";
inline constexpr std::string_view kLowerHexDigits = "0123456789abcdef";

/// -1 for a character that is not a hexadecimal digit.
constexpr int hexDigitValue(char character) {
    if (character >= '0' && character <= '9')
        return character - '0';
    const char lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// Appends the two digits of a byte.
inline void appendHex(std::string& text, unsigned char byte, std::string_view digits) {
    text += digits[byte >> 4];
    text += digits[byte & 15];
}
}
