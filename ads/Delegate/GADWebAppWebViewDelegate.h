#pragma once
#include "ads/Delegate/GADWebViewDelegate.h"

#include <memory>
#include <utility>

namespace vistrel {
class GADWebAppViewControllerPrivate;

/// The delegate of a full-screen web app's page. Tells the page once that it is shown.
class GADWebAppWebViewDelegate : public GADWebViewDelegate {
public:
    /// Not retained.
    void setWebAppPrivate(std::weak_ptr<GADWebAppViewControllerPrivate> object) {
        webAppPrivate_ = std::move(object);
    }

    /// The web app is on the screen: "onshow" is posted as soon as the page has loaded.
    void postOnShow(UIWebView& webView);
    /// The screen goes and the page follows: this delegate acts for nobody any more and, two
    /// seconds from now, empties the web view and lets go of it.
    void releaseWithWebView(std::shared_ptr<GADWebView> webView);

    void webViewDidStartLoad(UIWebView& webView) override;
    void webViewDidFinishLoad(UIWebView& webView) override;

protected:
    void loadedFirstPage(UIWebView& webView) override;

private:
    void postPendingOnShow(UIWebView& webView);

    std::weak_ptr<GADWebAppViewControllerPrivate> webAppPrivate_;
    bool pendingOnShow_ = false;
    bool calledOnShow_ = false;
};

}
