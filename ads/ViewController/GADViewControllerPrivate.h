#pragma once
#include "ads/Object/GADPrivateObject.h"
#include "ads/Utility/GADSupportedOrientations.h"

#include <memory>

namespace vistrel {
class GADDelegateManager;
class GADWebView;
class UIViewController;

/// The private half of a full-screen ad screen.
class GADViewControllerPrivate : public GADPrivateObject {
public:
    GADSupportedOrientations supportedOrientations_ = GADSupportedOrientations::Any;
    std::weak_ptr<GADWebView> openingWebView_; ///< of the ad that opened the screen
    std::shared_ptr<GADDelegateManager> delegateManager_;
    bool statusBarWasHidden_ = false;
    bool publisherIdleTimerDisabled_ = false;

    bool isFirst_ = false; ///< presented over the host, not over another ad screen
    std::shared_ptr<UIViewController> hold_; ///< the screen itself, while it is presented
};

}
