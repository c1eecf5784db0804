#pragma once
#include "ads/Delegate/GADWebViewDelegate.h"

#include <memory>
#include <utility>

namespace vistrel {
class GADObjectPrivate;

/// The delegate of a banner's page. A click, that is a navigation of a shown and touched ad, opens
/// a full-screen screen and is never loaded in the banner.
class GADBannerWebViewDelegate : public GADWebViewDelegate {
public:
    /// The ad object; not retained.
    void setPrivate(std::weak_ptr<GADObjectPrivate> object) { private_ = std::move(object); }

    bool webViewShouldStartLoadWithRequest(UIWebView& webView, const NSURLRequest& request,
                                           UIWebViewNavigationType type) override;
    void webViewDidFinishLoad(UIWebView& webView) override;
    void webViewDidFailLoadWithError(UIWebView& webView, const NSError& error) override;

protected:
    bool followURL(const NSURL& url, UIWebViewNavigationType type, GADWebView& webView) override;

private:
    void openClick(const NSURL& url, GADObjectPrivate& ad, GADWebView& webView);

    std::weak_ptr<GADObjectPrivate> private_;
};

}
