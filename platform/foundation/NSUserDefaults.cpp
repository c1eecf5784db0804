#include "platform/foundation/NSUserDefaults.h"

#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSRunLoop.h"
#include "platform/host/Host.h"
#include "platform/host/Preferences.h"

#include <memory>
#include <utility>

namespace vistrel {

namespace {
std::unique_ptr<NSUserDefaults>& shared() {
    static std::unique_ptr<NSUserDefaults> defaults;
    return defaults;
}
}

NSUserDefaults& NSUserDefaults::standardUserDefaults() {
    if (!shared())
        shared().reset(new NSUserDefaults());
    return *shared();
}

void NSUserDefaults::resetStandardUserDefaults() {
    shared().reset();
}

NSUserDefaults::NSUserDefaults() {
    auto stored = host::current().preferences->load();
    if (!stored)
        NSLog("User defaults cannot be read: " + stored.failure().message);
    else
        values_ = stored.value().dictionary();
}

NSUserDefaults::~NSUserDefaults() {
    NSRunLoop::cancelPerform(pendingSave_);
}

const Value* NSUserDefaults::find(std::string_view key) const {
    const Value* stored = values_.find(key);
    return stored ? stored : registered_.find(key);
}

Value NSUserDefaults::objectForKey(std::string_view key) const {
    const Value* value = find(key);
    return value ? *value : Value();
}

void NSUserDefaults::setObjectForKey(Value value, const std::string& key) {
    if (value.isNull()) {
        removeObjectForKey(key);
        return;
    }
    const Value* current = std::as_const(values_).find(key);
    if (current && *current == value)
        return;
    values_.set(key, std::move(value));
    scheduleSave();
}

float NSUserDefaults::floatForKey(std::string_view key) const {
    const Value* value = find(key);
    return value ? static_cast<float>(value->doubleValue()) : 0.0F;
}

void NSUserDefaults::setFloatForKey(float value, const std::string& key) {
    setObjectForKey(Value(static_cast<double>(value)), key);
}

void NSUserDefaults::removeObjectForKey(std::string_view key) {
    if (values_.erase(key))
        scheduleSave();
}

void NSUserDefaults::registerDefaults(const Value::Dictionary& defaults) {
    for (const auto& [key, value] : defaults)
        registered_.set(key, value);
}

void NSUserDefaults::scheduleSave() {
    dirty_ = true;
    if (pendingSave_ == 0) {
        pendingSave_ = NSRunLoop::performAfterDelay(
            0,
            [this] {
                pendingSave_ = 0;
                (void)synchronize();
            });
    }
}

bool NSUserDefaults::synchronize() {
    NSRunLoop::cancelPerform(std::exchange(pendingSave_, 0));
    if (!dirty_)
        return true;
    const auto status = host::current().preferences->save(values_);
    if (!status) {
        // The change stays in memory until the next save.
        NSLog("User defaults cannot be saved: " + status.failure().message);
        return false;
    }
    dirty_ = false;
    return true;
}

}
