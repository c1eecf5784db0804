#pragma once

namespace vistrel {
class GADBannerView;
class GADRequestError;

/// Receives a banner's events. May destroy the banner in any of these calls.
class GADBannerViewDelegate {
public:
    virtual ~GADBannerViewDelegate() = default;
    virtual void adViewDidReceiveAd(GADBannerView&) {}
    virtual void adViewDidFailToReceiveAdWithError(GADBannerView&, const GADRequestError&) {}
    /// A full-screen screen of the ad is about to cover the host's.
    virtual void adViewWillPresentScreen(GADBannerView&) {}
    virtual void adViewWillDismissScreen(GADBannerView&) {}
    virtual void adViewDidDismissScreen(GADBannerView&) {}
    /// Another application is about to be opened.
    virtual void adViewWillLeaveApplication(GADBannerView&) {}
};

}
