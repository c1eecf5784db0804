#pragma once
#include "platform/foundation/Value.h"

#include <string>
#include <string_view>

namespace vistrel {

/// Named values that survive restarts of the application. Stored in the user defaults by
/// synchronize() and on destruction. Getters return null for a missing key; setters ignore values
/// of another kind.
class GADStatisticsCore {
public:
    explicit GADStatisticsCore(std::string identifier);
    ~GADStatisticsCore();
    GADStatisticsCore(const GADStatisticsCore&) = delete;
    GADStatisticsCore& operator=(const GADStatisticsCore&) = delete;

    const std::string& identifier() const { return identifier_; }

    const Value* stringForKey(std::string_view key) const { return statistics_.find(key); }
    const Value* numberForKey(std::string_view key) const { return statistics_.find(key); }
    const Value* dateForKey(std::string_view key) const { return statistics_.find(key); }
    const Value* arrayForKey(std::string_view key) const { return statistics_.find(key); }
    const Value* dictionaryForKey(std::string_view key) const { return statistics_.find(key); }

    void setStringForKey(const Value& value, std::string_view key);
    void setNumberForKey(const Value& value, std::string_view key);
    void setDateForKey(const Value& value, std::string_view key);
    void setArrayForKey(const Value& value, std::string_view key);
    void setDictionaryForKey(const Value& value, std::string_view key);

    /// Adds to the key's number, 0 when missing, and returns the new number.
    int addValueNumberForKey(int value, std::string_view key);
    void removeObjectForKey(std::string_view key) { statistics_.erase(key); }
    void removeAllObjects() { statistics_.clear(); }

    void synchronize();
    std::string userDefaultsKey() const;

private:
    void setWhen(bool isOfThatKind, const Value& value, std::string_view key);

    std::string identifier_;
    Value::Dictionary statistics_;
};

}
