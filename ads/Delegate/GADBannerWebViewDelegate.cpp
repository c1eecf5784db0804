#include "ads/Delegate/GADBannerWebViewDelegate.h"

#include "ads/Object/GADObjectPrivate.h"
#include "ads/Opener/GADOpener.h"
#include "ads/Opener/GADSafetyPolicy.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/Timing/GADTiming.h"
#include "ads/View/GADWebView.h"
#include "platform/foundation/NSURLRequest.h"

namespace vistrel {

namespace {

/// A touch on a page that has just appeared under the finger was meant for something else.
constexpr double kSecondsBeforeClicks = 0.15;

bool isClick(const GADObjectPrivate& ad, UIWebViewNavigationType type) {
    return ad.state() == GADAdState::Shown &&
           GADTiming::counter() - ad.timeLastLoaded() >= kSecondsBeforeClicks &&
           type != UIWebViewNavigationType::BackForward &&
           type != UIWebViewNavigationType::Reload && ad.webView()->touched();
}

}

bool GADBannerWebViewDelegate::webViewShouldStartLoadWithRequest(UIWebView& webView,
                                                                 const NSURLRequest& request,
                                                                 UIWebViewNavigationType type) {
    const auto hold = shared_from_this();
    const auto ad = private_.lock();
    if (!ad)
        return GADWebViewDelegate::webViewShouldStartLoadWithRequest(webView, request, type);
    setViewController(ad->rootViewController());
    opener().setDelegateManager(ad->delegateManager());
    if (request.URL() && isClick(*ad, type))
        return openClick(*ad, webView, request, type);
    return GADWebViewDelegate::webViewShouldStartLoadWithRequest(webView, request, type);
}

bool GADBannerWebViewDelegate::openClick(GADObjectPrivate& ad, UIWebView& webView,
                                         const NSURLRequest& request,
                                         UIWebViewNavigationType type) {
    const NSURL url = GADStatistics::sharedStatistics().urlForClick(*request.URL());
    if (!GADWebViewDelegate::webViewShouldStartLoadWithRequest(webView, request, type))
        return false;
    opener().setReferringURL(NSURL::URLWithString(webView.URLString()));
    if (!url.scheme().starts_with("http") ||
        !GADSafetyPolicy::permitsLeaving(*ad.webView(), "click", &url))
        return false;
    if (ad.pendingClickURLs().empty())
        opener().openBrowserToURLSupportedOrientations(url, ad.supportedOrientations());
    else
        opener().openWebAppSupportedOrientations(url, ad.supportedOrientations());
    return false;
}

void GADBannerWebViewDelegate::webViewDidFinishLoad(UIWebView& webView) {
    GADWebViewDelegate::webViewDidFinishLoad(webView);
    if (const auto ad = private_.lock())
        ad->webViewDidFinishLoad();
}

void GADBannerWebViewDelegate::webViewDidFailLoadWithError(UIWebView&, const NSError&) {
    if (const auto ad = private_.lock())
        ad->webViewDidFailLoad();
}

}
