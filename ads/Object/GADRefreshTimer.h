#pragma once
#include <functional>
#include <memory>

namespace vistrel {
class NSTimer;

/// Asks for the next ad after an interval, once. It stands still while the application is in the
/// background or a full-screen screen of an ad is up, and begins its interval again afterwards.
class GADRefreshTimer {
public:
    explicit GADRefreshTimer(std::function<void()> action);
    ~GADRefreshTimer();
    GADRefreshTimer(const GADRefreshTimer&) = delete;
    GADRefreshTimer& operator=(const GADRefreshTimer&) = delete;

    /// Ends the running interval and begins one of so many seconds, which is remembered; 0 begins
    /// none.
    void schedule(double seconds);
    /// The last interval that was begun; 0 for none.
    double seconds() const { return seconds_; }
    void invalidate();

private:
    void observe(const char* name, void (GADRefreshTimer::*handler)());
    void enteredBackground();
    void enteredForeground();
    void fullScreenPresented();
    void fullScreenRelinquished();
    void begin();

    std::function<void()> action_;
    std::shared_ptr<NSTimer> timer_;
    double seconds_ = 0;
    bool inBackground_ = false;
    int fullScreenScreens_ = 0;
};

}
