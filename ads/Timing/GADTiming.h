#pragma once
#include "platform/foundation/Value.h"

#include <cstdint>
#include <memory>
#include <string>

namespace vistrel {

/// A stopwatch with a name and values attached to it. Times are seconds of the monotonic clock,
/// 0 when not set; they lose their meaning when the device is restarted.
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
    /// Only a timing that was started ends.
    void end();
    /// Forgets both times.
    void reset();
    /// Started and not ended.
    bool isActive() const { return startSeconds_ > 0 && endSeconds_ == 0; }

    const std::string& category() const { return category_; }
    double startSeconds() const { return startSeconds_; }
    double endSeconds() const { return endSeconds_; }
    /// Until now while it has not ended.
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
