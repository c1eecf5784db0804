#include "ads/Interstitial/GADInterstitialAppController.h"

#include "ads/Delegate/GADDelegateManager.h"
#include "ads/Interstitial/GADInterstitial.h"
#include "ads/Object/GADRequestError.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/Utility/GADAutorelease.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSTimer.h"
#include "platform/foundation/Weakly.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UIWindow.h"

#include <algorithm>
#include <utility>

namespace vistrel {

std::shared_ptr<GADInterstitialAppController>
GADInterstitialAppController::withWindowImageTimeoutInterstitial(
    const std::shared_ptr<UIWindow>& window, std::shared_ptr<const UIImage> image, int timeout,
    std::shared_ptr<GADInterstitial> interstitial) {
    std::shared_ptr<GADInterstitialAppController> made(new GADInterstitialAppController);
    made->interstitial_ = std::move(interstitial);
    made->hold_ = made;
    made->timeout_ = NSTimer::scheduledTimer(
        timeout, NSTimer::Repeats::No, weakly(made.get(), &GADInterstitialAppController::timeout));
    made->coverWindow(window, std::move(image));
    return made;
}

GADInterstitialAppController::~GADInterstitialAppController() {
    timeout_->invalidate();
    imageView_->removeFromSuperview();
    view()->removeFromSuperview();
}

int GADInterstitialAppController::wholeSeconds(float timeout) {
    constexpr float mostSeconds = 3600;
    return static_cast<int>(std::min(timeout, mostSeconds));
}

void GADInterstitialAppController::coverWindow(const std::shared_ptr<UIWindow>& window,
                                               std::shared_ptr<const UIImage> image) {
    window_ = window;
    storedUserViews_ = window->subviews();
    for (const auto& userView : storedUserViews_)
        userView->removeFromSuperview();
    UIApplication& application = UIApplication::sharedApplication();
    hideStatusBar_ = application.isStatusBarHidden();
    application.setStatusBarHidden(true);
    const CGRect frame{{}, window->frame().size};
    setView(std::make_shared<UIView>(frame));
    imageView_ = std::make_shared<UIImageView>(frame);
    imageView_->setImage(std::move(image));
    view()->addSubview(imageView_);
    window->addSubview(view());
}

void GADInterstitialAppController::interstitialDidReceiveAd(GADInterstitial& interstitial) {
    timeout_->invalidate();
    interstitial.presentFromRootViewController(shared_from_this());
}

void GADInterstitialAppController::interstitialDidFailToReceiveAdWithError(
    GADInterstitial&, const GADRequestError& error) {
    if (error.code() == static_cast<int>(GADErrorCode::NoFill))
        GADStatistics::sharedStatistics().setAppOpenInterstitialNoFill();
    end();
}

void GADInterstitialAppController::timeout() {
    GADStatistics::sharedStatistics().setAppOpenInterstitialTimeOut();
    NSLog("<GAD> Interstitial request timed out.");
    end();
}

void GADInterstitialAppController::interstitialWillDismissScreen(GADInterstitial&) {
    end();
}

void GADInterstitialAppController::end() {
    timeout_->invalidate();
    interstitial_->delegateManager()->setSDKInterstitialDelegate({});
    restoreWindowAndRelease();
}

void GADInterstitialAppController::restoreWindowAndRelease() {
    const auto self = std::exchange(hold_, nullptr);
    if (!self)
        return;
    gadAutorelease(self);
    UIApplication::sharedApplication().setStatusBarHidden(hideStatusBar_);
    imageView_->removeFromSuperview();
    if (const auto window = window_.lock())
        for (const auto& userView : storedUserViews_)
            window->addSubview(userView);
    storedUserViews_.clear();
}

bool GADInterstitialAppController::shouldAutorotateToInterfaceOrientation(
    UIInterfaceOrientation orientation) {
    return orientation == UIInterfaceOrientation::Portrait;
}

}
