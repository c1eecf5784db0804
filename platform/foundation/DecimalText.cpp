#include "platform/foundation/DecimalText.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace vistrel {
namespace {
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

std::size_t skipDigits(std::string_view text, std::size_t at) {
    while (at < text.size() && isDigit(text[at]))
        ++at;
    return at;
}

/// A decimal without redundant zeros: `digits` × 10^`exponent`.
struct Normal {
    bool negative = false;
    std::string digits;
    std::int64_t exponent = 0;
    bool operator==(const Normal&) const = default;
};

constexpr std::int64_t kExponentLimit = std::numeric_limits<std::int64_t>::max() / 4;

std::int64_t exponentOf(std::string_view text) {
    if (text.starts_with('+'))
        text.remove_prefix(1);
    std::int64_t exponent = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), exponent);
    if (result.ec == std::errc::result_out_of_range || exponent > kExponentLimit ||
        exponent < -kExponentLimit)
        return text.starts_with('-') ? -kExponentLimit : kExponentLimit;
    return exponent;
}

Normal normalised(std::string_view text) {
    Normal normal;
    normal.negative = text.starts_with('-');
    if (normal.negative)
        text.remove_prefix(1);
    const std::size_t e = text.find_first_of("eE");
    if (e != std::string_view::npos)
        normal.exponent = exponentOf(text.substr(e + 1));
    const std::string_view mantissa = text.substr(0, e);
    const std::size_t point = mantissa.find('.');
    normal.digits = mantissa.substr(0, point);
    if (point != std::string_view::npos) {
        normal.digits += mantissa.substr(point + 1);
        normal.exponent -= static_cast<std::int64_t>(mantissa.size() - point - 1);
    }
    const std::size_t last = normal.digits.find_last_not_of('0');
    if (last == std::string::npos)
        return Normal{};
    normal.exponent += static_cast<std::int64_t>(normal.digits.size() - last - 1);
    normal.digits.resize(last + 1);
    normal.digits.erase(0, normal.digits.find_first_not_of('0'));
    return normal;
}
}

bool isDecimalText(std::string_view text) {
    std::size_t at = text.starts_with('-') ? 1 : 0;
    const std::size_t whole = at;
    at = skipDigits(text, at);
    if (at == whole || (text[whole] == '0' && at != whole + 1))
        return false;
    if (at < text.size() && text[at] == '.') {
        const std::size_t fraction = at + 1;
        at = skipDigits(text, fraction);
        if (at == fraction)
            return false;
    }
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        ++at;
        if (at < text.size() && (text[at] == '+' || text[at] == '-'))
            ++at;
        const std::size_t exponent = at;
        at = skipDigits(text, exponent);
        if (at == exponent)
            return false;
    }
    return at == text.size();
}

double decimalTextAsDouble(std::string_view text) {
    double number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc::result_out_of_range)
        return number;
    // The decimal exponent of the first digit tells overflow from underflow.
    const Normal normal = normalised(text);
    const bool large = normal.exponent + static_cast<std::int64_t>(normal.digits.size()) > 0;
    const double magnitude = large ? std::numeric_limits<double>::infinity() : 0.0;
    return normal.negative ? -magnitude : magnitude;
}

std::int64_t decimalTextAsInteger(std::string_view text) {
    std::int64_t integer = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, integer);
    if (result.ec == std::errc() && result.ptr == end)
        return integer;
    const double number = decimalTextAsDouble(text);
    if (number >= 9223372036854775808.0)
        return std::numeric_limits<std::int64_t>::max();
    if (number <= -9223372036854775808.0)
        return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(number);
}

bool decimalTextsAreEqual(std::string_view a, std::string_view b) {
    return a == b || normalised(a) == normalised(b);
}
}
