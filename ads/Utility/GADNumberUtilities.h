#pragma once
#include <concepts>
#include <limits>
#include <string>
#include <string_view>

namespace vistrel {

namespace GADNumberUtilities {

/// The number with at most six decimals and none that are not needed: 320, 1.5.
std::string stringWithFloat(float number);

/// The whole number at the beginning of a text, after blanks; 0 when there is none, the nearest
/// end of the range when it lies outside.
int integerWithString(std::string_view text);

/// The decimal number at the beginning of a text, after blanks; 0 when there is none.
float floatWithString(std::string_view text);

/// The number without its fraction; the nearest end of the range when it lies outside, 0 for what
/// is no number.
template <std::integral Integer>
Integer saturated(double number) {
    using Limits = std::numeric_limits<Integer>;
    if (number != number)
        return 0;
    if (number <= static_cast<double>(Limits::min()))
        return Limits::min();
    if (number >= static_cast<double>(Limits::max()))
        return Limits::max();
    return static_cast<Integer>(number);
}

}
}
