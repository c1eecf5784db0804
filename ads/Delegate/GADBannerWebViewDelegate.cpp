#include "ads/Delegate/GADBannerWebViewDelegate.h"

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

}

bool GADBannerWebViewDelegate::webViewShouldStartLoadWithRequest(UIWebView& webView,
                                                                 const NSURLRequest& request,
                                                                 UIWebViewNavigationType type) {
    const auto hold = shared_from_this();
    if (const auto ad = private_.lock()) {
        setViewController(ad->rootViewController());
        opener().setDelegateManager(ad->delegateManager());
    }
    return GADWebViewDelegate::webViewShouldStartLoadWithRequest(webView, request, type);
}

bool GADBannerWebViewDelegate::followURL(const NSURL& url, UIWebViewNavigationType type,
                                         GADWebView& webView) {
    const auto ad = private_.lock();
    if (ad && isClick(*ad, type)) {
        openClick(url, *ad, webView);
        return false;
    }
    return GADWebViewDelegate::followURL(url, type, webView) &&
           !(ad && isClickOnAnOldAd(*ad, type));
}

void GADBannerWebViewDelegate::openClick(const NSURL& url, GADObjectPrivate& ad,
                                         GADWebView& webView) {
    const std::string scheme = gadLowerCased(url.scheme());
    if (scheme == "about" || scheme == "file" ||
        !GADSafetyPolicy::permitsLeaving(webView, "click", &url))
        return;
    const NSURL target = GADStatistics::sharedStatistics().urlForClick(url);
    opener().setReferringURL(NSURL::URLWithString(webView.URLString()));
    if (!GADOpener::isPageAddress(url))
        opener().openOutsideTheWeb(url);
    else if (ad.pendingClickURLs().empty())
        opener().openBrowserToURLSupportedOrientations(target, ad.supportedOrientations());
    else
        opener().openWebAppSupportedOrientations(target, ad.supportedOrientations());
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
