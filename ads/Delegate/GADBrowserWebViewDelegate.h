#pragma once
#include "ads/Delegate/GADWebViewDelegate.h"

#include <memory>
#include <utility>

namespace vistrel {
class GADBrowserController;

/// The delegate of the in-ad browser's pages: counts what the user visits, times the landing page,
/// and keeps the toolbar up to date.
class GADBrowserWebViewDelegate : public GADWebViewDelegate {
public:
    /// Not retained.
    void setBrowserController(std::weak_ptr<GADBrowserController> controller) {
        browserController_ = std::move(controller);
    }

    bool webViewShouldStartLoadWithRequest(UIWebView& webView, const NSURLRequest& request,
                                           UIWebViewNavigationType type) override;
    void webViewDidStartLoad(UIWebView& webView) override;
    void webViewDidFinishLoad(UIWebView& webView) override;
    void webViewDidFailLoadWithError(UIWebView& webView, const NSError& error) override;

private:
    void refreshToolbar();

    std::weak_ptr<GADBrowserController> browserController_;
};

}
