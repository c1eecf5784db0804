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

    /// Call when the web app is on the screen: posts "onshow" as soon as the page has loaded.
    void postOnShow(UIWebView& webView);
    /// Call when the screen goes: this delegate stops acting and, after two seconds, empties and
    /// releases the web view.
    void releaseWithWebView(std::shared_ptr<GADWebView> webView);

    void webViewDidStartLoad(UIWebView& webView) override;
    void webViewDidFinishLoad(UIWebView& webView) override;

protected:
    void loadedFirstPage(UIWebView& webView) override;

private:
    std::weak_ptr<GADWebAppViewControllerPrivate> webAppPrivate_;
    bool calledOnShow_ = false;
};

}
