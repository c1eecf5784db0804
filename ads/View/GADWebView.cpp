#include "ads/View/GADWebView.h"

#include "ads/Object/GADPrivateUtilities.h"
#include "ads/View/GADWebViewPrivate.h"

namespace vistrel {

std::shared_ptr<GADWebView> GADWebView::withFrame(CGRect frame) {
    return std::shared_ptr<GADWebView>(new GADWebView(frame));
}

GADWebView::GADWebView(CGRect frame)
    : UIWebView(frame, UIWebViewSession::Guest) {
    GADPrivateUtilities::setPrivateObjectForKey(std::make_shared<GADWebViewPrivate>(), this);
    setClipsToBounds(true);
    setScalesPageToFit(true);
    setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    setOpaque(false);
    setBackgroundColor(UIColor::clearColor());
}

GADWebView::~GADWebView() {
    GADPrivateUtilities::removePrivateObjectForKey(this);
}

std::shared_ptr<GADWebViewPrivate> GADWebView::vars() const {
    return GADPrivateUtilities::privateObjectForKey<GADWebViewPrivate>(this);
}

bool GADWebView::touched() const {
    return vars()->touched();
}

void GADWebView::forgetTouch() {
    vars()->forgetTouch();
}

std::optional<double> GADWebView::secondsSinceTouch() const {
    return vars()->secondsSinceTouch();
}

void GADWebView::empty() {
    setDelegate({});
    // A view that has not loaded anything has no page yet and need not start the engine for one.
    if (foreignContent())
        loadHTMLStringBaseURL("", std::nullopt);
}

bool GADWebView::touchWillBeginInside(const UITouch& touch) {
    vars()->touch();
    return UIWebView::touchWillBeginInside(touch);
}

}
