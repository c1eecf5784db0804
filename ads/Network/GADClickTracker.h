#pragma once
#include "ads/Network/GADCachedFile.h"
#include "ads/Network/GADClickTrackerDelegate.h"

#include <memory>
#include <optional>

namespace vistrel {

/// Pings one tracking address and follows its redirects. A redirect to an address outside the web
/// also counts as success and is not followed. Reports at most once. The delegate is not retained.
class GADClickTracker : public std::enable_shared_from_this<GADClickTracker>,
                        public GADCachedFileDelegate {
public:
    static std::shared_ptr<GADClickTracker>
    withDelegate(std::weak_ptr<GADClickTrackerDelegate> delegate);
    ~GADClickTracker() override;
    GADClickTracker(const GADClickTracker&) = delete;
    GADClickTracker& operator=(const GADClickTracker&) = delete;

    /// Resets, then pings.
    void trackURL(const NSURL& url);
    /// Where the redirects have led so far; nothing before the first ping.
    std::optional<NSURL> trackingURL() const;
    /// The ping has succeeded or failed.
    bool hasTracked() const { return hasTracked_; }
    /// Cancels the running ping without a report.
    void reset();

    /// Whether any tracker in the process is waiting for its server. Code that is about to leave
    /// the application waits for them: once suspended, it could not finish its pings.
    static bool activeTrackings();

private:
    explicit GADClickTracker(std::weak_ptr<GADClickTrackerDelegate> delegate);
    void beginTracking();
    void endTracking();
    /// The delegate to call if the ping has not been reported yet; marks it as reported.
    std::shared_ptr<GADClickTrackerDelegate> takeReport();
    void succeed();

    void cachedFileDownloadDidEnd(GADCachedFile& file) override;
    void cachedFileDownloadDidFail(GADCachedFile& file, const NSError* error) override;
    std::optional<NSError> cachedFileShouldRedirectToURL(GADCachedFile& file,
                                                         const NSURL& url) override;

    std::weak_ptr<GADClickTrackerDelegate> delegate_;
    std::shared_ptr<GADCachedFile> tracker_;
    bool hasTracked_ = false;
    bool isTracking_ = false; ///< counted among the trackings in flight
};

}
