#pragma once
#include <functional>
#include <memory>

namespace vistrel {
class NSTimer;

/// Requests the next ad once, after an interval. Stops while the application is in the background
/// or an ad's full-screen screen is shown, and restarts the interval afterwards.
class GADRefreshTimer {
public:
    explicit GADRefreshTimer(std::function<void()> action);
    ~GADRefreshTimer();
    GADRefreshTimer(const GADRefreshTimer&) = delete;
    GADRefreshTimer& operator=(const GADRefreshTimer&) = delete;

    /// Ends the running interval and starts one of the given seconds; 0 starts none.
    void schedule(double seconds);
    /// The last interval that was started; 0 for none.
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
