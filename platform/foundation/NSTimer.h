#pragma once
#include <functional>
#include <memory>

namespace vistrel {

/// Calls an action on the run loop after an interval, once or repeatedly. The run loop keeps a
/// scheduled timer alive until it has fired (or, repeating, until invalidate).
class NSTimer {
public:
    enum class Repeats { No, Yes };

    /// Interval in seconds. A repeating timer that falls behind skips the missed firings.
    static std::shared_ptr<NSTimer> scheduledTimer(double interval, Repeats repeats,
                                                   std::function<void()> action);

    /// Never fires again; may be called any number of times, also from the action.
    void invalidate();
    bool isValid() const;
    double timeInterval() const;

    ~NSTimer();
    NSTimer(const NSTimer&) = delete;
    NSTimer& operator=(const NSTimer&) = delete;

private:
    struct State;
    explicit NSTimer(std::shared_ptr<State> state);
    std::shared_ptr<State> state_;
};

}
