#pragma once
#include "ads/Network/GADCachedFile.h"
#include "ads/Object/GADPrivateObject.h"
#include "ads/Object/GADRequestError.h"
#include "ads/Request/GADRequestPrivate.h"
#include "ads/Utility/GADSupportedOrientations.h"
#include "platform/graphics/CGGeometry.h"

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace vistrel {
class GADBannerView;
class GADBannerWebViewDelegate;
class GADBuildPage;
class GADDelegateManager;
class GADRefreshTimer;
class GADTrackers;
class GADWebView;
class UIViewController;
struct NSNotification;

/// The progress of a load, with the library's numbers.
enum class GADAdState : int {
    Idle = 0,
    FetchingScript = 1,
    ScriptFailed = 2,
    BuildingRequest = 3,
    FetchingAd = 4,
    LoadingAd = 5,
    Shown = 6,
    Failed = 7
};

/// The private half of a banner or an interstitial: loads an ad into its web view. A load fetches
/// the request-building script, runs it in a hidden page to get the ad's address, fetches the ad's
/// HTML and loads the page. Failures are reported to the delegate manager. Calls during a load, or
/// while the application is not active, do nothing.
class GADObjectPrivate : public GADPrivateObject, public GADCachedFileDelegate {
public:
    /// Without a visible banner.
    static std::shared_ptr<GADObjectPrivate> withFrame(CGRect frame);
    /// Of the banner, to which the ad's web view is added.
    static std::shared_ptr<GADObjectPrivate> withView(GADBannerView& view);
    ~GADObjectPrivate() override;

    /// Null: a request without hints.
    void loadRequest(const GADRequest* request);
    /// The same for a full-screen ad.
    void loadInterstitialRequest(const GADRequest* request);

    GADAdState state() const { return state_; }
    bool isMakingRequest() const;
    /// Null before the first load.
    std::shared_ptr<const GADRequestPrivate> request() const { return request_; }
    const std::shared_ptr<GADWebView>& webView() const { return webView_; }
    /// Null for an interstitial.
    std::shared_ptr<GADBannerView> adView() const { return adView_.lock(); }
    const std::string& adUnitID() const { return adUnitID_; }
    void setAdUnitID(std::string adUnitID) { adUnitID_ = std::move(adUnitID); }
    std::weak_ptr<UIViewController> rootViewController() const { return rootViewController_; }
    void setRootViewController(std::weak_ptr<UIViewController> controller) {
        rootViewController_ = std::move(controller);
    }
    const std::shared_ptr<GADDelegateManager>& delegateManager() const { return delegateManager_; }
    GADSupportedOrientations supportedOrientations() const { return supportedOrientations_; }
    /// When the ad was shown, in monotonic seconds.
    double timeLastLoaded() const { return timeLastLoaded_; }
    /// Whether the refresh timer started the current or last load.
    bool hasAutoRefreshed() const { return hasAutoRefreshed_; }
    std::vector<NSURL> pendingClickURLs() const { return pendingClickURLs_; }
    std::vector<NSURL> pendingTrackingURLs() const { return pendingTrackingURLs_; }
    /// The ad's page and its address; nothing before the first ad.
    std::optional<std::string> adHTMLString() const;
    std::optional<NSURL> adHTMLBaseURL() const;
    /// Path of the request-building script.
    virtual std::string jsBuildAdURL() const;

    void trackURLs(std::span<const NSURL> urls);
    /// Cancels the refresh timer.
    void cancelPendingActions();
    /// `parameters` are those of the failed request; none when it was not sent.
    void reportErrorCode(GADErrorCode code, const Value::Dictionary& parameters = {});

    /// For the delegate of the ad's web view.
    void webViewDidFinishLoad();
    void webViewDidFailLoad();

    /// Resets the state that is shared by the process, as a new launch would.
    static void resetProcessState();

protected:
    GADObjectPrivate();
    void setUp(CGRect bounds, const std::shared_ptr<GADBannerView>& adView);

private:
    enum class AutoRefresh { No, Yes };

    void loadPrivateRequest(std::shared_ptr<GADRequestPrivate> request, AutoRefresh autoRefresh);
    /// The refresh interval is over. Gives up a page that has not loaded in that time.
    void refresh();
    void setState(GADAdState state);
    void fail(GADErrorCode code);

    void ensureSupportFiles();
    void scriptDownloadDidEnd();
    void buildAdURL(const std::string& script);
    Value::Dictionary parametersOfRequest() const;
    void scriptDidAnswer(const NSNotification& answer);
    void scriptDidLoadAdURL(const Value::Dictionary& answer);
    void scriptDidRefuse(const Value::Dictionary& answer, const char* logPrefix);
    void fetchAd(std::optional<NSURL> url);
    void replaceAdHTML(std::shared_ptr<GADCachedFile> file);
    void readHeaders();
    void showAd();
    void adDownloadDidFail(int status);
    void scheduleRefresh();
    void logMissingServer() const;

    void cachedFileDownloadDidEnd(GADCachedFile& file) override;
    void cachedFileDownloadDidFail(GADCachedFile& file, const NSError* error) override;
    std::optional<NSError> cachedFileShouldRedirectToURL(GADCachedFile& file,
                                                         const NSURL& url) override;

    std::weak_ptr<GADBannerView> adView_;
    std::string adUnitID_;
    std::shared_ptr<GADDelegateManager> delegateManager_;
    std::weak_ptr<UIViewController> rootViewController_;
    std::shared_ptr<GADWebView> webView_;
    std::unique_ptr<GADBuildPage> buildPage_;
    std::shared_ptr<GADBannerWebViewDelegate> webViewDelegate_;
    std::shared_ptr<GADCachedFile> buildAdJS_;
    std::shared_ptr<GADCachedFile> adHTML_;
    std::shared_ptr<GADRequestPrivate> request_;
    Value::Dictionary sentParameters_;
    GADAdState state_ = GADAdState::Idle;
    double timeLastLoaded_ = 0;
    std::shared_ptr<GADTrackers> trackers_;
    std::vector<NSURL> pendingTrackingURLs_;
    std::vector<NSURL> pendingClickURLs_;
    std::unique_ptr<GADRefreshTimer> reloadTimer_;
    bool hasAutoRefreshed_ = false;
    GADSupportedOrientations supportedOrientations_ = GADSupportedOrientations::Any;
};

}
