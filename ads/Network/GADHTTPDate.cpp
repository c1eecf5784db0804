#include "ads/Network/GADHTTPDate.h"

#include "platform/foundation/Trimmed.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace vistrel {

namespace {

using namespace std::chrono;

constexpr std::array<std::string_view, 7> kDays{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr std::array<std::string_view, 12> kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

/// Takes pieces off the front of a text. After one is missing, every call fails.
class Scanner {
public:
    explicit Scanner(std::string_view text)
        : rest_(text) {}

    void literal(std::string_view text) {
        if (rest_.starts_with(text))
            rest_.remove_prefix(text.size());
        else
            failed_ = true;
    }

    template <std::size_t Count>
    unsigned word(const std::array<std::string_view, Count>& words) {
        for (unsigned index = 0; index < Count; ++index) {
            if (!rest_.starts_with(words[index]))
                continue;
            rest_.remove_prefix(words[index].size());
            return index;
        }
        failed_ = true;
        return 0;
    }

    int number(std::size_t fewestDigits, std::size_t mostDigits) {
        std::size_t digits = 0;
        int value = 0;
        while (digits < mostDigits && digits < rest_.size() && rest_[digits] >= '0' &&
               rest_[digits] <= '9')
            value = value * 10 + (rest_[digits++] - '0');
        failed_ = failed_ || digits < fewestDigits;
        rest_.remove_prefix(digits);
        return value;
    }

    bool succeeded() const { return !failed_ && rest_.empty(); }

private:
    std::string_view rest_;
    bool failed_ = false;
};

}

std::string GADHTTPDate::stringWithSeconds(double secondsSince1970) {
    // Years 0 to 9999, which have four digits.
    constexpr double earliest = -62167219200;
    constexpr double latest = 253402300799;
    const double bounded = std::isnan(secondsSince1970)
                               ? 0
                               : std::clamp(std::floor(secondsSince1970), earliest, latest);
    const sys_seconds moment{seconds(static_cast<std::int64_t>(bounded))};
    const auto day = floor<days>(moment);
    const year_month_day date(day);
    const hh_mm_ss time(moment - day);
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%s, %02u %s %04d %02d:%02d:%02d",
                  kDays[weekday(day).c_encoding()].data(), static_cast<unsigned>(date.day()),
                  kMonths[static_cast<unsigned>(date.month()) - 1].data(),
                  static_cast<int>(date.year()), static_cast<int>(time.hours().count()),
                  static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()));
    return buffer.data();
}

std::optional<double> GADHTTPDate::secondsWithString(std::string_view text) {
    Scanner scanner(trimmed(text));
    scanner.word(kDays);
    scanner.literal(", ");
    const int dayOfMonth = scanner.number(1, 2);
    scanner.literal(" ");
    const unsigned monthIndex = scanner.word(kMonths);
    scanner.literal(" ");
    const int yearNumber = scanner.number(4, 4);
    scanner.literal(" ");
    const int hour = scanner.number(1, 2);
    scanner.literal(":");
    const int minute = scanner.number(1, 2);
    scanner.literal(":");
    const int second = scanner.number(1, 2);
    const year_month_day date(year(yearNumber), month(monthIndex + 1),
                              day(static_cast<unsigned>(dayOfMonth)));
    if (!scanner.succeeded() || !date.ok() || hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    const auto moment = sys_days(date) + hours(hour) + minutes(minute) + seconds(second);
    return static_cast<double>(moment.time_since_epoch().count());
}

}
