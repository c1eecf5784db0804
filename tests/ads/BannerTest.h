#pragma once
#include "ads/Delegate/GADBannerViewDelegate.h"
#include "ads/View/GADBannerView.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIWindow.h"
#include "tests/ads/AdsTest.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vistrel {

/// Records what it hears, and does what a test wants in it.
class RecordingBannerDelegate : public GADBannerViewDelegate {
public:
    void adViewDidReceiveAd(GADBannerView&) override { hear("received"); }
    void adViewDidFailToReceiveAdWithError(GADBannerView&, const GADRequestError& error) override;
    void adViewWillPresentScreen(GADBannerView&) override { hear("will present"); }
    void adViewWillDismissScreen(GADBannerView&) override { hear("will dismiss"); }
    void adViewDidDismissScreen(GADBannerView&) override { hear("did dismiss"); }
    void adViewWillLeaveApplication(GADBannerView&) override { hear("will leave"); }

    std::vector<std::string> events;
    std::function<void()> onEvent;

private:
    void hear(std::string event);
};

/// A banner on a screen, an ad server, and a page engine whose pages do what a test says.
class BannerTest : public AdsTest {
protected:
    static constexpr const char* kScriptURL = "http://static.example/afma/sdk-core-v40.js";
    static constexpr const char* kAdURL = "http://ads.example/ad?id=1";

    BannerTest();
    ~BannerTest() override;

    GADBannerView& banner() { return *banner_; }
    /// Destroys the banner.
    void letGoOfBanner();
    RecordingBannerDelegate& delegate() { return *delegate_; }
    std::weak_ptr<GADBannerViewDelegate> delegateOf() { return delegate_; }
    UIViewController& root() { return *navigation_; }

    support::ScriptedWebPage& page() { return *webEngine().page(); }
    /// The newest page navigates by itself, as a script or a link does; whether it may.
    bool go(const std::string& url, host::WebNavigationType type = host::WebNavigationType::Other);
    /// A finger touches the ad.
    void touchAd();

    /// Asks for an ad; the script has been fetched and runs in the hidden page.
    void load();
    /// The script gives the ad's address, and the ad is fetched.
    void answerScript(const std::string& url = kAdURL);
    /// The whole way to an ad on the screen. Its answer is what the network has at kAdURL.
    void show();
    int requestsFor(const std::string& url);
    std::string takeEvents();

private:
    std::shared_ptr<UIWindow> window_;
    std::shared_ptr<UINavigationController> navigation_;
    std::shared_ptr<GADBannerView> banner_;
    std::shared_ptr<RecordingBannerDelegate> delegate_;
};

}
