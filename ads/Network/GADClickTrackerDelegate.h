#pragma once

namespace vistrel {
class GADClickTracker;
class NSError;
class NSURL;

/// Receives the result of a ping, once.
class GADClickTrackerDelegate {
public:
    virtual ~GADClickTrackerDelegate() = default;
    /// Fetched; `url` is where the redirects led.
    virtual void trackerDidRedirect(GADClickTracker& tracker, const NSURL& url) = 0;
    /// No error: the server answered with an unexpected status.
    virtual void trackerDidFailWithError(GADClickTracker& tracker, const NSError* error) = 0;
};

}
