#pragma once
#include <concepts>
#include <limits>
#include <string>
#include <string_view>

namespace vistrel {

namespace GADNumberUtilities {

/// The number with at most six decimals and no trailing zeros: 320, 1.5.
std::string stringWithFloat(float number);

/// The whole number at the start of a text, after blanks; 0 when there is none, the nearest limit
/// when it is out of range.
int integerWithString(std::string_view text);

/// The decimal number at the start of a text, after blanks; 0 when there is none.
float floatWithString(std::string_view text);

/// The number without its fraction; the nearest limit when it is out of range, 0 for NaN.
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
