#pragma once
#include "ads/Network/GADClickTrackerDelegate.h"

#include <memory>
#include <span>
#include <vector>

namespace vistrel {
class GADClickTracker;

/// The running pings of an ad; they end with it. Each is released in the pass of the run loop after
/// its report.
class GADTrackers : public std::enable_shared_from_this<GADTrackers>,
                    public GADClickTrackerDelegate {
public:
    GADTrackers();
    ~GADTrackers() override;

    void trackURLs(std::span<const NSURL> urls);

private:
    void trackerDidRedirect(GADClickTracker& tracker, const NSURL& url) override;
    void trackerDidFailWithError(GADClickTracker& tracker, const NSError* error) override;
    void scheduleCleanUp();
    void removeFinished();

    std::vector<std::shared_ptr<GADClickTracker>> trackers_;
    bool cleanUpIsScheduled_ = false;
};

}
