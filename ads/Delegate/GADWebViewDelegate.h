#pragma once
#include "ads/Network/GADClickTrackerDelegate.h"
#include "platform/foundation/NSURL.h"
#include "platform/foundation/Value.h"
#include "platform/uikit/UIInterfaceOrientation.h"
#include "platform/uikit/UIWebViewDelegate.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace vistrel {
class GADClickTracker;
class GADNotification;
class GADOpener;
class GADWebView;
class UIViewController;

enum class GADSpamSignals { No, Yes };

/// The delegate of every page of the library. A page sends a command by navigating to a bridge
/// address, which is carried out and never loaded. The system opens addresses outside the web; all
/// others are loaded. Owned by the owner of the web view.
class GADWebViewDelegate : public std::enable_shared_from_this<GADWebViewDelegate>,
                           public UIWebViewDelegate,
                           public GADClickTrackerDelegate {
public:
    GADWebViewDelegate();
    ~GADWebViewDelegate() override;

    bool hasLoadedAtLeastOnce() const { return hasLoadedAtLeastOnce_; }
    GADOpener& opener() const { return *opener_; }
    /// Presents the screens that the page opens; not retained.
    std::shared_ptr<UIViewController> viewController() const { return viewController_.lock(); }
    void setViewController(std::weak_ptr<UIViewController> controller) {
        viewController_ = std::move(controller);
    }
    /// The page of the ad that opened this one, for full-screen pages; not retained.
    std::shared_ptr<GADWebView> openingWebView() const { return openingWebView_.lock(); }
    void setOpeningWebView(std::weak_ptr<GADWebView> webView) {
        openingWebView_ = std::move(webView);
    }

    static void notifyWebViewOfOrientationChange(UIWebView& webView,
                                                 UIInterfaceOrientation orientation);
    void trackURLStringAppendSpamSignals(const std::string& url, GADSpamSignals signals);
    /// Tells the page which of the addresses the system can open.
    void processCanOpenURLsWebView(const std::string& commaSeparatedURLs, UIWebView& webView);
    /// Runs the parameter "js" in the page that opened this one and sends the result to `webView`,
    /// which asked for it.
    void evaluateJavaScriptInOpener(const Value::Dictionary& parameters,
                                    std::weak_ptr<UIWebView> webView);
    void processTouchSignals(const Value::Dictionary& parameters);
    /// -1 when missing.
    static int intForKeyFromDictionary(const std::string& key, const Value::Dictionary& dictionary);

    bool webViewShouldStartLoadWithRequest(UIWebView& webView, const NSURLRequest& request,
                                           UIWebViewNavigationType type) override;
    void webViewDidFinishLoad(UIWebView& webView) override;

protected:
    /// Follows an address that is no command; whether the page loads it.
    virtual bool followURL(const NSURL& url, UIWebViewNavigationType type, GADWebView& webView);
    /// The first page of this delegate has finished loading.
    virtual void loadedFirstPage(UIWebView& /*webView*/) {}

private:
    void performCommand(const GADNotification& notification, const NSURL& url, GADWebView& webView);
    void evaluateInOpenerLater(const Value::Dictionary& parameters, GADWebView& webView);

    void trackerDidRedirect(GADClickTracker& tracker, const NSURL& url) override;
    void trackerDidFailWithError(GADClickTracker& tracker, const NSError* error) override;

    bool hasLoadedAtLeastOnce_ = false;
    std::shared_ptr<GADOpener> opener_;
    std::shared_ptr<GADClickTracker> tracker_;
    std::weak_ptr<UIViewController> viewController_;
    std::weak_ptr<GADWebView> openingWebView_;
};

}
