#include "ads/json/GAD_ZelJSONDescription.h"

#include "platform/foundation/HexDigits.h"

#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace vistrel {
namespace {
/// Beyond this many seconds from 1970 the calendar's year no longer fits.
constexpr double kFarthestDate = 9e11;

std::string dateDescription(double secondsSince1970) {
    using namespace std::chrono;
    if (!(std::fabs(secondsSince1970) < kFarthestDate))
        return "distant date";
    const sys_seconds moment{seconds(static_cast<std::int64_t>(std::floor(secondsSince1970)))};
    const sys_days day = floor<days>(moment);
    const year_month_day date{day};
    const hh_mm_ss time{moment - day};
    std::array<char, 64> text;
    const int length = std::snprintf(
        text.data(), text.size(), "%04d-%02u-%02u %02d:%02d:%02d +0000", int{date.year()},
        unsigned{date.month()}, unsigned{date.day()}, static_cast<int>(time.hours().count()),
        static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()));
    return {text.data(), static_cast<std::size_t>(length)};
}

std::string dataDescription(std::span<const std::byte> bytes) {
    std::string text = "<";
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i != 0 && i % 4 == 0)
            text += ' ';
        appendHex(text, std::to_integer<unsigned char>(bytes[i]), kLowerHexDigits);
    }
    return text += '>';
}
}

std::string zelJSONDescription(const Value& value) {
    if (value.isDate())
        return dateDescription(value.dateValue());
    return value.isData() ? dataDescription(value.dataValue()) : std::string();
}
}
