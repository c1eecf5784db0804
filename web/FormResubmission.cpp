#include "web/FormResubmission.h"

#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSURLRequest.h"
#include "platform/foundation/Weakly.h"
#include "platform/uikit/UIWebView.h"

#include <utility>

namespace vistrel {

namespace {

bool repeats(UIWebViewNavigationType type) {
    return type == UIWebViewNavigationType::Reload ||
           type == UIWebViewNavigationType::BackForward ||
           type == UIWebViewNavigationType::FormResubmitted;
}

}

FormResubmission::FormResubmission(std::weak_ptr<UIWebView> webView)
    : webView_(std::move(webView)) {}

void FormResubmission::go(Move move) {
    move_ = move;
    if (const auto webView = webView_.lock())
        (webView.get()->*move)();
}

bool FormResubmission::permits(const NSURLRequest& request, UIWebViewNavigationType type) {
    if (!repeats(type) || request.isSafeToRepeat())
        return true;
    const std::string address = request.URL() ? request.URL()->absoluteString() : std::string();
    if (std::exchange(agreedAddress_, {}) == address)
        return true;
    refusedAddress_ = address;
    // A page may have moved by itself.
    const Move ownMove =
        type == UIWebViewNavigationType::BackForward ? &UIWebView::goBack : &UIWebView::reload;
    refusedMove_ = move_ ? std::exchange(move_, nullptr) : ownMove;
    UIAlertView::withTitle(NSLocalizedString("Send Again?"),
                           NSLocalizedString("To show this page, the form has to be sent again."),
                           weakReference<UIAlertViewDelegate>(this), NSLocalizedString("Cancel"),
                           {NSLocalizedString("Send")})
        ->show();
    return false;
}

void FormResubmission::forget() {
    move_ = nullptr;
    agreedAddress_.clear();
}

void FormResubmission::alertViewClickedButtonAtIndex(UIAlertView&, int buttonIndex) {
    if (buttonIndex == 0)
        return;
    agreedAddress_ = refusedAddress_;
    go(refusedMove_);
}

}
