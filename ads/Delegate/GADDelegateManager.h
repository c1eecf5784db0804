#pragma once
#include <memory>
#include <utility>

namespace vistrel {
class GADBannerView;
class GADBannerViewDelegate;
class GADInterstitial;
class GADInterstitialDelegate;
class GADRequestError;

/// Forwards an ad's events to the banner's delegate, then to the library's own interstitial
/// delegate, then to the host's. Retains neither them nor the ad. When it calls out, it keeps
/// itself and the delegates alive until the next pass of the run loop, so a delegate may destroy
/// the ad.
class GADDelegateManager : public std::enable_shared_from_this<GADDelegateManager> {
public:
    std::weak_ptr<GADBannerViewDelegate> bannerDelegate() const { return bannerDelegate_; }
    void setBannerDelegate(std::weak_ptr<GADBannerViewDelegate> delegate) {
        bannerDelegate_ = std::move(delegate);
    }
    void setAdView(std::weak_ptr<GADBannerView> adView) { adView_ = std::move(adView); }
    std::weak_ptr<GADInterstitialDelegate> interstitialDelegate() const {
        return interstitialDelegate_;
    }
    void setInterstitialDelegate(std::weak_ptr<GADInterstitialDelegate> delegate) {
        interstitialDelegate_ = std::move(delegate);
    }
    void setInterstitial(std::weak_ptr<GADInterstitial> interstitial) {
        interstitial_ = std::move(interstitial);
    }
    /// The start-up interstitial's delegate; called before the host's.
    void setSDKInterstitialDelegate(std::weak_ptr<GADInterstitialDelegate> delegate) {
        sdkInterstitialDelegate_ = std::move(delegate);
    }

    void didReceiveAd();
    void didFailToReceiveAdWithError(const GADRequestError& error);
    void willPresentScreen();
    void willDismissScreen();
    void didDismissScreen();
    void willLeaveApplication();

private:
    template <typename BannerEvent, typename InterstitialEvent, typename... Details>
    void tell(BannerEvent bannerEvent, InterstitialEvent interstitialEvent,
              const Details&... details);

    std::weak_ptr<GADBannerViewDelegate> bannerDelegate_;
    std::weak_ptr<GADBannerView> adView_;
    std::weak_ptr<GADInterstitialDelegate> interstitialDelegate_;
    std::weak_ptr<GADInterstitial> interstitial_;
    std::weak_ptr<GADInterstitialDelegate> sdkInterstitialDelegate_;
};

}
