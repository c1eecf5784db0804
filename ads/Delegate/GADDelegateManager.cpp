#include "ads/Delegate/GADDelegateManager.h"

#include "ads/Delegate/GADBannerViewDelegate.h"
#include "ads/Delegate/GADInterstitialDelegate.h"
#include "ads/Utility/GADAutorelease.h"

namespace vistrel {

template <typename BannerEvent, typename InterstitialEvent, typename... Details>
void GADDelegateManager::tell(BannerEvent bannerEvent, InterstitialEvent interstitialEvent,
                              const Details&... details) {
    gadAutorelease(shared_from_this());
    const auto call = [&](const auto& weakDelegate, const auto& weakAd, auto event) {
        const auto delegate = weakDelegate.lock();
        const auto ad = weakAd.lock();
        if (!delegate || !ad)
            return;
        gadAutorelease(delegate);
        ((*delegate).*event)(*ad, details...);
    };
    call(bannerDelegate_, adView_, bannerEvent);
    call(sdkInterstitialDelegate_, interstitial_, interstitialEvent);
    call(interstitialDelegate_, interstitial_, interstitialEvent);
}

void GADDelegateManager::didReceiveAd() {
    tell(&GADBannerViewDelegate::adViewDidReceiveAd,
         &GADInterstitialDelegate::interstitialDidReceiveAd);
}

void GADDelegateManager::didFailToReceiveAdWithError(const GADRequestError& error) {
    tell(&GADBannerViewDelegate::adViewDidFailToReceiveAdWithError,
         &GADInterstitialDelegate::interstitialDidFailToReceiveAdWithError, error);
}

void GADDelegateManager::willPresentScreen() {
    tell(&GADBannerViewDelegate::adViewWillPresentScreen,
         &GADInterstitialDelegate::interstitialWillPresentScreen);
}

void GADDelegateManager::willDismissScreen() {
    tell(&GADBannerViewDelegate::adViewWillDismissScreen,
         &GADInterstitialDelegate::interstitialWillDismissScreen);
}

void GADDelegateManager::didDismissScreen() {
    tell(&GADBannerViewDelegate::adViewDidDismissScreen,
         &GADInterstitialDelegate::interstitialDidDismissScreen);
}

void GADDelegateManager::willLeaveApplication() {
    tell(&GADBannerViewDelegate::adViewWillLeaveApplication,
         &GADInterstitialDelegate::interstitialWillLeaveApplication);
}

}
