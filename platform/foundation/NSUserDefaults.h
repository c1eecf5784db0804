#pragma once
#include "platform/foundation/Value.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vistrel {

/// The application's persistent values. Changes are kept in memory at once and saved together at
/// the next turn of the run loop, atomically: a kill at any moment leaves the old or the new
/// content.
class NSUserDefaults {
public:
    static NSUserDefaults& standardUserDefaults();
    /// Forgets the shared object; the next use reads the store again.
    static void resetStandardUserDefaults();

    /// The stored value, else the registered one, else a null value.
    Value objectForKey(std::string_view key) const;
    void setObjectForKey(Value value, const std::string& key);
    /// 0 when the key has no number.
    float floatForKey(std::string_view key) const;
    void setFloatForKey(float value, const std::string& key);
    void removeObjectForKey(std::string_view key);
    /// Adds values for keys that have none stored. They are not saved.
    void registerDefaults(const Value::Dictionary& defaults);
    /// Saves now; whether that succeeded.
    bool synchronize();

    ~NSUserDefaults();
    NSUserDefaults(const NSUserDefaults&) = delete;
    NSUserDefaults& operator=(const NSUserDefaults&) = delete;

private:
    NSUserDefaults();
    const Value* find(std::string_view key) const;
    void scheduleSave();

    Value::Dictionary values_;
    Value::Dictionary registered_;
    bool dirty_ = false;
    std::uint64_t pendingSave_ = 0;
};

}
