#pragma once
#include "platform/foundation/Value.h"

#include <cstdint>
#include <memory>
#include <string>

namespace vistrel {

/// A stopwatch with a name and attached values. Times are seconds of the monotonic clock, 0 when
/// not set, and meaningless after a restart of the device.
class GADTiming {
public:
    /// Null without a name.
    static std::shared_ptr<GADTiming> withCategory(std::string category);
    static std::shared_ptr<GADTiming>
    withDictionaryRepresentation(const Value::Dictionary& representation);
    std::shared_ptr<GADTiming> copy() const;

    /// The monotonic clock.
    static double counter();

    /// Restarts.
    void start();
    /// Does nothing unless the timing was started.
    void end();
    /// Clears both times.
    void reset();
    /// Whether it was started and has not ended.
    bool isActive() const { return startSeconds_ > 0 && endSeconds_ == 0; }

    const std::string& category() const { return category_; }
    double startSeconds() const { return startSeconds_; }
    double endSeconds() const { return endSeconds_; }
    /// Up to now while it has not ended.
    std::uint32_t elapsedMilliseconds() const;
    std::string elapsedMillisecondsString() const;

    /// A null value changes nothing.
    void setValueForKey(Value value, const std::string& key);
    /// Null when absent.
    const Value* valueForKey(const std::string& key) const { return userData_.find(key); }
    void removeValueForKey(const std::string& key) { userData_.erase(key); }
    const Value::Dictionary& keysAndValues() const { return userData_; }

    Value::Dictionary dictionaryRepresentation() const;
    std::string description() const;

private:
    explicit GADTiming(std::string category)
        : category_(std::move(category)) {}

    std::string category_;
    double startSeconds_ = 0;
    double endSeconds_ = 0;
    Value::Dictionary userData_;
};

}
