#pragma once

namespace vistrel {
class GADInterstitial;
class GADRequestError;

/// Receives an interstitial's events. May destroy the interstitial in any of these calls.
class GADInterstitialDelegate {
public:
    virtual ~GADInterstitialDelegate() = default;
    virtual void interstitialDidReceiveAd(GADInterstitial&) {}
    virtual void interstitialDidFailToReceiveAdWithError(GADInterstitial&, const GADRequestError&) {
    }
    virtual void interstitialWillPresentScreen(GADInterstitial&) {}
    virtual void interstitialWillDismissScreen(GADInterstitial&) {}
    virtual void interstitialDidDismissScreen(GADInterstitial&) {}
    /// Another application is about to be opened.
    virtual void interstitialWillLeaveApplication(GADInterstitial&) {}
};

}
