#pragma once
#include "ads/ViewController/GADViewControllerPrivate.h"
#include "platform/foundation/NSURL.h"

#include <memory>
#include <optional>

namespace vistrel {
class GADBrowserWebViewDelegate;
class UIActivityIndicatorView;
class UIBarButtonItem;
class UIToolbar;

/// The private half of the in-ad browser.
class GADBrowserControllerPrivate : public GADViewControllerPrivate {
public:
    std::optional<NSURL> urlToLoad_; ///< requested before the page existed
    std::optional<NSURL> referringURLToLoad_;
    std::shared_ptr<GADBrowserWebViewDelegate> webViewDelegate_;
    std::shared_ptr<GADWebView> webView_;
    std::shared_ptr<UIToolbar> toolbar_;
    std::shared_ptr<UIBarButtonItem> flexibleSpaceButton_;
    std::shared_ptr<UIBarButtonItem> backButton_;
    std::shared_ptr<UIBarButtonItem> forwardButton_;
    std::shared_ptr<UIBarButtonItem> reloadButton_;
    std::shared_ptr<UIBarButtonItem> safariButton_;
    std::shared_ptr<UIBarButtonItem> doneButton_;
    std::shared_ptr<UIBarButtonItem> spinnerContainingButton_;
    std::shared_ptr<UIActivityIndicatorView> spinner_;
};

}
