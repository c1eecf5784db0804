#include "ads/Object/GADRefreshTimer.h"

#include "ads/Notification/GADNotificationCenter.h"
#include "ads/Utility/GADIdentifierUtilities.h"
#include "platform/foundation/NSTimer.h"
#include "platform/uikit/UIApplication.h"

#include <algorithm>
#include <utility>

namespace vistrel {

GADRefreshTimer::GADRefreshTimer(std::function<void()> action)
    : action_(std::move(action)) {
    const bool suspends = GADIdentifierUtilities::isOSAtLeastMajorMinorBug(4, 0, 0);
    observe(suspends ? UIApplicationDidEnterBackgroundNotification
                     : UIApplicationWillResignActiveNotification,
            &GADRefreshTimer::enteredBackground);
    observe(suspends ? UIApplicationWillEnterForegroundNotification
                     : UIApplicationDidBecomeActiveNotification,
            &GADRefreshTimer::enteredForeground);
    observe(kGADViewControllerWillPresentFullScreenNotification,
            &GADRefreshTimer::fullScreenPresented);
    observe(kGADViewControllerDidRelinquishFullScreenNotification,
            &GADRefreshTimer::fullScreenRelinquished);
}

GADRefreshTimer::~GADRefreshTimer() {
    GADNotificationCenter::defaultCenter().removeObserver(this);
    invalidate();
}

void GADRefreshTimer::observe(const char* name, void (GADRefreshTimer::*handler)()) {
    GADNotificationCenter::defaultCenter().addObserver(
        this, name, nullptr, [this, handler](const NSNotification&) { (this->*handler)(); });
}

void GADRefreshTimer::schedule(double seconds) {
    invalidate();
    if (seconds <= 0)
        return;
    seconds_ = seconds;
    begin();
}

void GADRefreshTimer::begin() {
    invalidate();
    if (seconds_ > 0 && !inBackground_ && fullScreenScreens_ == 0)
        timer_ = NSTimer::scheduledTimer(seconds_, NSTimer::Repeats::No, action_);
}

void GADRefreshTimer::invalidate() {
    if (const auto timer = std::exchange(timer_, nullptr))
        timer->invalidate();
}

void GADRefreshTimer::enteredBackground() {
    inBackground_ = true;
    invalidate();
}

void GADRefreshTimer::enteredForeground() {
    inBackground_ = false;
    begin();
}

void GADRefreshTimer::fullScreenPresented() {
    ++fullScreenScreens_;
    invalidate();
}

void GADRefreshTimer::fullScreenRelinquished() {
    fullScreenScreens_ = std::max(0, fullScreenScreens_ - 1);
    begin();
}

}
