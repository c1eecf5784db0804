#pragma once
#include "ads/Delegate/GADBannerViewDelegate.h"
#include "ads/View/GADBannerView.h"
#include "tests/ads/AdsTest.h"

namespace vistrel {

/// Records what it is told. A test can react to each event.
class RecordingBannerDelegate : public GADBannerViewDelegate {
public:
    void adViewDidReceiveAd(GADBannerView&) override { hear("received"); }
    void adViewDidFailToReceiveAdWithError(GADBannerView&, const GADRequestError& error) override;
    void adViewWillPresentScreen(GADBannerView&) override { hear("will present"); }
    void adViewWillDismissScreen(GADBannerView&) override { hear("will dismiss"); }
    void adViewDidDismissScreen(GADBannerView&) override { hear("did dismiss"); }
    void adViewWillLeaveApplication(GADBannerView&) override { hear("will leave"); }

    std::string events; ///< "received, will present"
    std::function<void(const std::string& event)> onEvent;

private:
    void hear(const std::string& event);
};

/// A banner on a screen, an ad server, and a page engine whose pages do what a test says.
class BannerTest : public AdsTest {
protected:
    static constexpr const char* kScriptURL = "http://static.example/afma/sdk-core-v40.js";
    static constexpr const char* kAdURL = "http://ads.example/ad?id=1";

    BannerTest();
    ~BannerTest() override;

    GADBannerView& banner() { return *banner_; }
    /// A banner of 320 x 50 points with the recording delegate, not on screen.
    std::shared_ptr<GADBannerView> makeBanner();
    void letGoOfBanner();
    RecordingBannerDelegate& delegate() { return *delegate_; }
    /// The delegate's events since the last call.
    std::string takeEvents() { return std::exchange(delegate_->events, {}); }

    support::ScriptedWebPage& page() { return *webEngine().page(); }
    /// The newest page navigates, as a script or a link does; whether that is allowed.
    bool go(const std::string& url, host::WebNavigationType type = host::WebNavigationType::Other);
    /// A finger touches the ad.
    void touchAd();

    /// Asks for an ad; the script has been fetched and runs in the hidden page.
    void load();
    /// The script gives the ad's address, and the ad is fetched.
    void answerScript();
    /// Loads kAdURL's ad and puts it on the screen.
    void show();
    int requestsFor(const std::string& url);

private:
    std::shared_ptr<RecordingBannerDelegate> delegate_ =
        std::make_shared<RecordingBannerDelegate>();
    std::shared_ptr<GADBannerView> banner_;
};

}
