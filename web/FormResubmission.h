#pragma once
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UIWebViewDelegate.h"

#include <memory>
#include <string>

namespace vistrel {
class NSURLRequest;
class UIWebView;

/// Moves through a page's history, and asks before a move sends a form again.
class FormResubmission : public UIAlertViewDelegate,
                         public std::enable_shared_from_this<FormResubmission> {
public:
    using Move = void (UIWebView::*)();

    explicit FormResubmission(std::weak_ptr<UIWebView> webView);

    void go(Move move);
    /// Whether the navigation may start. When it would send a form again, that is refused once and
    /// the user asked; an agreement holds for the next navigation to the same address.
    bool permits(const NSURLRequest& request, UIWebViewNavigationType type);
    /// The page has been loaded or left: what the user agreed to is over.
    void forget();

    void alertViewClickedButtonAtIndex(UIAlertView& alertView, int buttonIndex) override;

private:
    std::weak_ptr<UIWebView> webView_;
    Move move_ = nullptr; ///< under way
    Move refusedMove_ = nullptr;
    std::string refusedAddress_;
    std::string agreedAddress_;
};

}
