#pragma once
#include <cstdint>

namespace vistrel {

/// A service's result: 0 for success, else a four-character code or a small negative number.
using OSStatus = std::int32_t;
inline constexpr OSStatus noErr = 0;

/// The value of a four-character code.
constexpr std::uint32_t fourCharCode(const char (&text)[5]) {
    std::uint32_t code = 0;
    for (int i = 0; i < 4; ++i)
        code = code << 8 | static_cast<unsigned char>(text[i]);
    return code;
}

}
