#pragma once
#include "ads/ViewController/GADViewControllerPrivate.h"
#include "platform/foundation/NSURL.h"

#include <memory>
#include <optional>
#include <string>

namespace vistrel {
class GADObjectPrivate;
class GADWebAppWebViewDelegate;
class UIActivityIndicatorView;
class UIButton;

/// The private half of the full-screen web app.
class GADWebAppViewControllerPrivate : public GADViewControllerPrivate {
public:
    /// The first page has finished loading.
    void removeLoadingSpinner();

    std::optional<NSURL> urlToLoad_; ///< requested before the page existed
    std::optional<std::string> htmlToLoad_;
    std::optional<NSURL> htmlBaseURLToLoad_;
    std::shared_ptr<GADWebAppWebViewDelegate> webViewDelegate_;
    std::shared_ptr<GADWebView> webView_;
    std::shared_ptr<UIButton> closeButton_;
    std::shared_ptr<UIActivityIndicatorView> loadingSpinner_;
    std::weak_ptr<GADObjectPrivate> adController_; ///< whose click addresses are pinged
};

}
