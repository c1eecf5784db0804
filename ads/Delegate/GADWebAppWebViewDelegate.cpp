#include "ads/Delegate/GADWebAppWebViewDelegate.h"

#include "ads/Delegate/GADLandingPageTiming.h"
#include "ads/Notification/GADNotificationCenter.h"
#include "ads/Request/GADRequest.h"
#include "ads/Utility/GADIdentifierUtilities.h"
#include "ads/View/GADWebView.h"
#include "ads/WebApp/GADWebAppViewControllerPrivate.h"
#include "platform/foundation/NSRunLoop.h"

namespace vistrel {

namespace {
/// Long enough for the page to be told that it is closing and to react.
constexpr double kSecondsUntilEmptied = 2;
}

void GADWebAppWebViewDelegate::postOnShow(UIWebView& webView) {
    if (!hasLoadedAtLeastOnce() || webView.isLoading() || calledOnShow_)
        return;
    calledOnShow_ = true;
    GADNotificationCenter::postJSNotificationUserInfoWebView(
        "onshow",
        Value::Dictionary{{"version", GADRequest::sdkVersion()},
                          {"device", GADIdentifierUtilities::sharedInstance().deviceSubmodel()}},
        webView);
}

void GADWebAppWebViewDelegate::webViewDidStartLoad(UIWebView&) {
    GADLandingPageTiming::loadStarted();
}

void GADWebAppWebViewDelegate::webViewDidFinishLoad(UIWebView& webView) {
    const auto hold = shared_from_this();
    GADWebViewDelegate::webViewDidFinishLoad(webView);
    GADLandingPageTiming::loadEnded();
    postOnShow(webView);
}

void GADWebAppWebViewDelegate::loadedFirstPage(UIWebView&) {
    if (const auto webApp = webAppPrivate_.lock())
        webApp->removeLoadingSpinner();
}

void GADWebAppWebViewDelegate::releaseWithWebView(std::shared_ptr<GADWebView> webView) {
    setViewController({});
    setWebAppPrivate({});
    NSRunLoop::performAfterDelay(
        kSecondsUntilEmptied,
        [self = shared_from_this(), webView = std::move(webView)] { webView->empty(); });
}

}
