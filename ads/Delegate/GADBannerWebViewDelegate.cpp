#include "ads/Delegate/GADBannerWebViewDelegate.h"

#include "ads/Notification/GADNotification.h"
#include "ads/Object/GADObjectPrivate.h"
#include "ads/Opener/GADOpener.h"
#include "ads/Opener/GADSafetyPolicy.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/Timing/GADTiming.h"
#include "ads/Utility/GADTextUtilities.h"
#include "ads/View/GADWebView.h"
#include "platform/foundation/NSURLRequest.h"

namespace vistrel {

namespace {

/// A touch on a page that has just appeared under the finger was meant for something else.
constexpr double kSecondsBeforeClicks = 0.15;

bool followsATouch(const GADObjectPrivate& ad, UIWebViewNavigationType type) {
    return type != UIWebViewNavigationType::BackForward &&
           type != UIWebViewNavigationType::Reload && ad.webView()->touched();
}

bool isClick(const GADObjectPrivate& ad, UIWebViewNavigationType type) {
    return ad.state() == GADAdState::Shown &&
           GADTiming::counter() - ad.timeLastLoaded() >= kSecondsBeforeClicks &&
           followsATouch(ad, type);
}

/// The ad stays visible while the next one is fetched, and after that has failed.
bool isClickOnAnOldAd(const GADObjectPrivate& ad, UIWebViewNavigationType type) {
    return ad.state() != GADAdState::Shown && ad.state() != GADAdState::LoadingAd &&
           followsATouch(ad, type);
}

bool leadsOut(const NSURL& url) {
    const std::string scheme = gadLowerCased(url.scheme());
    return scheme != "about" && scheme != "file" && !GADNotification::isNotificationURL(url);
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
    return GADWebViewDelegate::webViewShouldStartLoadWithRequest(webView, request, type) &&
           !isClickOnAnOldAd(*ad, type);
}

bool GADBannerWebViewDelegate::openClick(GADObjectPrivate& ad, UIWebView& webView,
                                         const NSURLRequest& request,
                                         UIWebViewNavigationType type) {
    // Before the click counts.
    if (leadsOut(*request.URL()) &&
        !GADSafetyPolicy::permitsLeaving(*ad.webView(), "click", &*request.URL()))
        return false;
    const NSURL url = GADStatistics::sharedStatistics().urlForClick(*request.URL());
    if (!GADWebViewDelegate::webViewShouldStartLoadWithRequest(webView, request, type))
        return false;
    opener().setReferringURL(NSURL::URLWithString(webView.URLString()));
    if (!url.scheme().starts_with("http"))
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

void GADBannerWebViewDelegate::webViewDidFailLoadWithError(UIWebView&, const NSError& error) {
    const auto ad = private_.lock();
    // The next load of the same page cancels the one before.
    if (ad && error.code() != NSURLErrorCancelled)
        ad->webViewDidFailLoad();
}

}
