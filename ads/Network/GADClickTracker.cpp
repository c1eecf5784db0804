#include "ads/Network/GADClickTracker.h"

#include "ads/GADSettings.h"
#include "ads/Statistics/GADStatistics.h"
#include "platform/foundation/Weakly.h"

#include <utility>

namespace vistrel {

namespace {
int trackingsInFlight = 0;
}

GADClickTracker::GADClickTracker(std::weak_ptr<GADClickTrackerDelegate> delegate)
    : delegate_(std::move(delegate)) {}

std::shared_ptr<GADClickTracker>
GADClickTracker::withDelegate(std::weak_ptr<GADClickTrackerDelegate> delegate) {
    return std::shared_ptr<GADClickTracker>(new GADClickTracker(std::move(delegate)));
}

GADClickTracker::~GADClickTracker() {
    reset();
}

bool GADClickTracker::activeTrackings() {
    return trackingsInFlight != 0;
}

void GADClickTracker::beginTracking() {
    isTracking_ = true;
    ++trackingsInFlight;
}

void GADClickTracker::endTracking() {
    if (std::exchange(isTracking_, false))
        --trackingsInFlight;
}

void GADClickTracker::trackURL(const NSURL& url) {
    reset();
    beginTracking();
    tracker_ = GADCachedFile::withDelegateURL(weakReference<GADCachedFileDelegate>(this), url);
    tracker_->validate();
}

std::optional<NSURL> GADClickTracker::trackingURL() const {
    return tracker_ ? std::optional(tracker_->httpDestinationURL()) : std::nullopt;
}

void GADClickTracker::reset() {
    hasTracked_ = false;
    if (const auto file = std::exchange(tracker_, nullptr)) {
        file->setDelegate({});
        file->invalidate();
    }
    endTracking();
}

std::shared_ptr<GADClickTrackerDelegate> GADClickTracker::takeReport() {
    return std::exchange(hasTracked_, true) ? nullptr : delegate_.lock();
}

void GADClickTracker::succeed() {
    if (hasTracked_)
        return;
    const NSURL destination = tracker_->httpDestinationURL();
    GADStatistics::sharedStatistics().addClickTrackingURL(tracker_->sourceURL());
    endTracking();
    if (const auto delegate = takeReport())
        delegate->trackerDidRedirect(*this, destination);
}

void GADClickTracker::cachedFileDownloadDidEnd(GADCachedFile&) {
    succeed();
}

void GADClickTracker::cachedFileDownloadDidFail(GADCachedFile&, const NSError* error) {
    endTracking();
    if (const auto delegate = takeReport())
        delegate->trackerDidFailWithError(*this, error);
}

std::optional<NSError> GADClickTracker::cachedFileShouldRedirectToURL(GADCachedFile&,
                                                                      const NSURL& url) {
    if (url.scheme().starts_with("http"))
        return std::nullopt;
    succeed();
    return NSError(kGADErrorDomain, NSURLErrorCancelled, "The address leads out of the web.");
}

}
