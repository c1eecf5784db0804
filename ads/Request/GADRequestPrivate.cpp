#include "ads/Request/GADRequestPrivate.h"

#include "ads/Network/GADNetworkChecker.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/Utility/GADIdentifierUtilities.h"
#include "ads/Utility/GADNumberUtilities.h"
#include "ads/Utility/GADSignalGathering.h"
#include "ads/Utility/GADTextualDescription.h"
#include "platform/foundation/NSLog.h"
#include "platform/host/Desktop.h"
#include "platform/host/Host.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <ctime>

namespace vistrel {

namespace {

constexpr int kFirstYear = 1;
constexpr int kLastYear = 9999;

/// The calendar date in the device's time zone; nothing when the year does not have four digits.
std::optional<std::tm> localDate(double secondsSince1970) {
    const auto moment =
        static_cast<std::time_t>(GADNumberUtilities::saturated<std::int64_t>(secondsSince1970));
    std::tm date{};
    if (!localtime_r(&moment, &date) || date.tm_year + 1900 < kFirstYear ||
        date.tm_year + 1900 > kLastYear)
        return std::nullopt;
    return date;
}

Value::Array valuesOf(const GADRequest::Strings& strings) {
    Value::Array values;
    values.reserve(strings.size());
    for (const std::string& string : strings)
        values.push_back(std::string_view(string));
    return values;
}

void addAll(Value::Dictionary& dictionary, const Value::Dictionary& entries) {
    for (const auto& [key, value] : entries)
        dictionary.set(key, value);
}

}

GADRequestPrivate::GADRequestPrivate(const GADRequest& request)
    : testDevices_(request.testDevices())
    , testing_(request.testing())
    , additionalParameters_(request.additionalParameters())
    , gender_(request.gender())
    , birthday_(request.birthday())
    , keywords_(request.keywords()) {
    const auto* source = dynamic_cast<const GADRequestPrivate*>(&request);
    if (!source)
        return;
    location_ = source->location_;
    interstitialAd_ = source->interstitialAd_;
}

void GADRequestPrivate::setBirthdayWithMonthDayYear(int month, int day, int year) {
    birthday_.reset();
    constexpr int mostDays = 1'000'000;
    if (year < kFirstYear || year > kLastYear || std::abs(static_cast<long>(day)) > mostDays ||
        std::abs(static_cast<long>(month)) > mostDays)
        return;
    std::tm date{};
    date.tm_year = year - 1900;
    date.tm_mon = month - 1;
    date.tm_mday = day;
    date.tm_isdst = -1;
    birthday_ = static_cast<double>(std::mktime(&date));
}

void GADRequestPrivate::setLocationWithLatitudeLongitudeAccuracy(float latitude, float longitude,
                                                                 float accuracy) {
    location_ = GADLocation::withLatitudeLongitudeAccuracy(latitude, longitude, accuracy);
}

void GADRequestPrivate::setLocationWithDescription(const std::string& description) {
    location_ = GADLocation::withDescription(description);
}

void GADRequestPrivate::addKeyword(const std::string& keyword) {
    if (keyword.empty())
        return;
    if (!keywords_)
        keywords_ = std::make_shared<Strings>();
    keywords_->push_back(keyword);
}

std::optional<std::string> GADRequestPrivate::genderString() const {
    switch (gender_) {
    case GADGender::Male:
        return "m";
    case GADGender::Female:
        return "f";
    case GADGender::Unknown:
        break;
    }
    return std::nullopt;
}

std::optional<std::string> GADRequestPrivate::birthdayString() const {
    const auto date = birthday_ ? localDate(*birthday_) : std::nullopt;
    if (!date)
        return std::nullopt;
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%04d%02d%02d", date->tm_year + 1900,
                  date->tm_mon + 1, date->tm_mday);
    return buffer.data();
}

Value::Dictionary GADRequestPrivate::parameters() const {
    Value::Dictionary parameters = GADIdentifierUtilities::sharedInstance().parameters();
    parameters.set("js", std::string_view(sdkVersion()));
    if (const auto network = GADNetworkChecker::sharedChecker().networkTypeString())
        parameters.set("net", std::string_view(*network));
    if (testing_) {
        NSLog("<GAD> \"testing\" property has been deprecated.  Use \"testDevices\" instead.");
        parameters.set("testing", "1");
    }
    if (testDevices_ &&
        std::ranges::find(*testDevices_, host::current().device->identity().uniqueIdentifier) !=
            testDevices_->end())
        parameters.set("adtest", "on");
    addHints(parameters);
    addAll(parameters, GADStatistics::sharedStatistics().parameters());
    parameters.set("preqs", counter_);
    return parameters;
}

void GADRequestPrivate::addHints(Value::Dictionary& parameters) const {
    if (additionalParameters_)
        parameters.set("extras", *additionalParameters_);
    if (const auto gender = genderString())
        parameters.set("cust_gender", std::string_view(*gender));
    if (const auto birthday = birthdayString())
        parameters.set("cust_age", std::string_view(*birthday));
    if (keywords_)
        parameters.set("kw", valuesOf(*keywords_));
    const auto place = location_ ? location_->oolongRepresentation() : std::nullopt;
    if (place)
        parameters.set("uule", std::string_view(*place));
}

Value::Dictionary GADRequestPrivate::spamSignals() const {
    const auto signals = GADSignalGathering::shared().requestSignals();
    if (!signals)
        return {};
    const std::string_view text = *signals;
    const auto equals = text.find('=');
    if (equals == std::string_view::npos)
        return {};
    std::string_view value = text.substr(equals + 1);
    value = value.substr(0, value.find('='));
    if (value.empty())
        return {};
    return {{text.substr(0, equals), value}};
}

std::string GADRequestPrivate::description() const {
    std::string text = "GADRequestPrivate<" + gadAddressText(this) + ">: ";
    if (gender_ == GADGender::Male)
        text += "\ngender:Male";
    if (gender_ == GADGender::Female)
        text += "\ngender:Female";
    if (birthday_)
        text += "\nbirthday:" + gadTextualDescription(Value::date(*birthday_));
    if (location_)
        text += "\nlocation:" + location_->description();
    if (keywords_)
        text += "\nkeywords:" + gadTextualDescription(Value(valuesOf(*keywords_)));
    if (additionalParameters_)
        text += "\nadditionalParameters:" + gadTextualDescription(*additionalParameters_);
    return text;
}

}
