#pragma once
#include "ads/Network/GADCachedFile.h"
#include "ads/Network/GADClickTrackerDelegate.h"

#include <memory>
#include <optional>

namespace vistrel {

/// Pings one tracking address and follows its redirects through the web; a redirect out of the web
/// is a success as well and is not followed. Reports at most once. The delegate is not retained.
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
    /// Gives up the running ping; nothing is reported.
    void reset();

    /// Whether any tracker of the process is waiting for its server. The system does not suspend
    /// an application whose pings are under way: whoever is about to leave it waits for them.
    static bool activeTrackings();

private:
    explicit GADClickTracker(std::weak_ptr<GADClickTrackerDelegate> delegate);
    void beginTracking();
    void endTracking();
    /// The delegate to tell, when the ping has not been reported yet; it counts as reported then.
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
