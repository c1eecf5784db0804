#pragma once
#include "ads/Delegate/GADInterstitialDelegate.h"
#include "platform/uikit/UIViewController.h"

#include <memory>
#include <vector>

namespace vistrel {
class NSTimer;
class UIImage;
class UIImageView;
class UIWindow;

/// Shows an interstitial when the application starts: covers the window with the launch picture
/// until the ad has arrived, failed or timed out, then restores the window. Keeps itself alive
/// until then.
class GADInterstitialAppController : public UIViewController, public GADInterstitialDelegate {
public:
    static std::shared_ptr<GADInterstitialAppController>
    withWindowImageTimeoutInterstitial(const std::shared_ptr<UIWindow>& window,
                                       std::shared_ptr<const UIImage> image, int timeout,
                                       std::shared_ptr<GADInterstitial> interstitial);
    ~GADInterstitialAppController() override;

    /// Drops the fraction and limits a server's unreasonable values.
    static int wholeSeconds(float timeout);

    void interstitialDidReceiveAd(GADInterstitial& interstitial) override;
    void interstitialDidFailToReceiveAdWithError(GADInterstitial& interstitial,
                                                 const GADRequestError& error) override;
    void interstitialWillDismissScreen(GADInterstitial& interstitial) override;

    bool shouldAutorotateToInterfaceOrientation(UIInterfaceOrientation orientation) override;

private:
    GADInterstitialAppController() = default;
    void coverWindow(const std::shared_ptr<UIWindow>& window, std::shared_ptr<const UIImage> image);
    void timeout();
    void end();
    void restoreWindowAndRelease();

    std::shared_ptr<GADInterstitial> interstitial_;
    std::weak_ptr<UIView> window_;
    std::vector<std::shared_ptr<UIView>> storedUserViews_;
    std::shared_ptr<UIImageView> imageView_;
    std::shared_ptr<NSTimer> timeout_;
    bool hideStatusBar_ = false;
    std::shared_ptr<UIViewController> hold_; ///< itself, until the window is restored
};

}
