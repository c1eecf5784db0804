#include "ads/Network/GADTrackers.h"

#include "ads/Network/GADClickTracker.h"
#include "platform/foundation/NSRunLoop.h"
#include "platform/foundation/Weakly.h"

#include <utility>

namespace vistrel {

GADTrackers::GADTrackers() = default;

GADTrackers::~GADTrackers() {
    for (const auto& tracker : trackers_)
        tracker->reset();
}

void GADTrackers::trackURLs(std::span<const NSURL> urls) {
    for (const NSURL& url : urls) {
        trackers_.push_back(
            GADClickTracker::withDelegate(weakReference<GADClickTrackerDelegate>(this)));
        trackers_.back()->trackURL(url);
    }
}

void GADTrackers::trackerDidRedirect(GADClickTracker&, const NSURL&) {
    scheduleCleanUp();
}

void GADTrackers::trackerDidFailWithError(GADClickTracker&, const NSError*) {
    scheduleCleanUp();
}

void GADTrackers::scheduleCleanUp() {
    if (!std::exchange(cleanUpIsScheduled_, true))
        NSRunLoop::performAfterDelay(0, weakly(this, &GADTrackers::removeFinished));
}

void GADTrackers::removeFinished() {
    cleanUpIsScheduled_ = false;
    std::erase_if(trackers_, [](const auto& tracker) { return tracker->hasTracked(); });
}

}
