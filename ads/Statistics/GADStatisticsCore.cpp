#include "ads/Statistics/GADStatisticsCore.h"

#include "ads/Utility/GADNumberUtilities.h"
#include "platform/foundation/NSUserDefaults.h"

#include <utility>

namespace vistrel {

GADStatisticsCore::GADStatisticsCore(std::string identifier)
    : identifier_(std::move(identifier)) {
    const Value stored = NSUserDefaults::standardUserDefaults().objectForKey(userDefaultsKey());
    statistics_ = stored.dictionary();
}

GADStatisticsCore::~GADStatisticsCore() {
    synchronize();
}

void GADStatisticsCore::setStringForKey(const Value& value, std::string_view key) {
    setWhen(value.isString(), value, key);
}

void GADStatisticsCore::setNumberForKey(const Value& value, std::string_view key) {
    setWhen(value.isNumber(), value, key);
}

void GADStatisticsCore::setDateForKey(const Value& value, std::string_view key) {
    setWhen(value.isDate(), value, key);
}

void GADStatisticsCore::setArrayForKey(const Value& value, std::string_view key) {
    setWhen(value.isArray(), value, key);
}

void GADStatisticsCore::setDictionaryForKey(const Value& value, std::string_view key) {
    setWhen(value.isDictionary(), value, key);
}

void GADStatisticsCore::setWhen(bool isOfThatKind, const Value& value, std::string_view key) {
    if (isOfThatKind)
        statistics_.set(key, value);
}

int GADStatisticsCore::addValueNumberForKey(int value, std::string_view key) {
    const Value* number = numberForKey(key);
    const double sum = (number ? number->doubleValue() : 0) + value;
    const int result = GADNumberUtilities::saturated<int>(sum);
    statistics_.set(key, result);
    return result;
}

void GADStatisticsCore::synchronize() {
    NSUserDefaults& defaults = NSUserDefaults::standardUserDefaults();
    defaults.setObjectForKey(statistics_, userDefaultsKey());
    (void)defaults.synchronize();
}

std::string GADStatisticsCore::userDefaultsKey() const {
    return "gad_stats_" + identifier_;
}

}
