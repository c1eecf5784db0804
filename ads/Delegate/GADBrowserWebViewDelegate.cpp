#include "ads/Delegate/GADBrowserWebViewDelegate.h"

#include "ads/Browser/GADBrowserController.h"
#include "ads/Delegate/GADLandingPageTiming.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/Utility/GADTextUtilities.h"
#include "platform/foundation/NSURLRequest.h"

namespace vistrel {

bool GADBrowserWebViewDelegate::webViewShouldStartLoadWithRequest(UIWebView& webView,
                                                                  const NSURLRequest& request,
                                                                  UIWebViewNavigationType type) {
    if (request.URL() && (type == UIWebViewNavigationType::LinkClicked ||
                          type == UIWebViewNavigationType::FormSubmitted)) {
        GADStatistics& statistics = GADStatistics::sharedStatistics();
        if (gadLowerCased(request.URL()->scheme()) == "https")
            statistics.incrementSSLPageNavigationCount();
        else
            statistics.incrementPageNavigationCount();
    }
    return GADWebViewDelegate::webViewShouldStartLoadWithRequest(webView, request, type);
}

void GADBrowserWebViewDelegate::webViewDidStartLoad(UIWebView&) {
    GADLandingPageTiming::loadStarted();
    refreshToolbar();
}

void GADBrowserWebViewDelegate::webViewDidFinishLoad(UIWebView& webView) {
    const auto hold = shared_from_this();
    GADWebViewDelegate::webViewDidFinishLoad(webView);
    GADLandingPageTiming::loadEnded();
    refreshToolbar();
}

void GADBrowserWebViewDelegate::webViewDidFailLoadWithError(UIWebView&, const NSError&) {
    refreshToolbar();
}

void GADBrowserWebViewDelegate::refreshToolbar() {
    if (const auto browser = browserController_.lock())
        browser->refreshToolbar();
}

}
