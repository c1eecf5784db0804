#pragma once
#include "ads/Delegate/GADBannerViewDelegate.h"
#include "ads/GADSettings.h"
#include "ads/Object/GADObjectPrivate.h"
#include "ads/Object/GADRequestError.h"
#include "ads/Opener/GADSafetyPolicy.h"
#include "ads/View/GADBannerView.h"
#include "ads/View/GADWebView.h"
#include "ads/ViewController/GADViewController.h"
#include "platform/uikit/UITouch.h"
#include "tests/ads/AdsTest.h"
#include "tests/support/Heard.h"

namespace vistrel {

/// Records what it is told. A test can react to each event.
class RecordingBannerDelegate : public GADBannerViewDelegate {
public:
    void adViewDidReceiveAd(GADBannerView&) override { hear("received"); }
    void adViewDidFailToReceiveAdWithError(GADBannerView&, const GADRequestError& error) override {
        lastFailure = error.userInfo();
        hear("failed " + std::to_string(error.code()));
    }
    void adViewWillPresentScreen(GADBannerView&) override { hear("will present"); }
    void adViewWillDismissScreen(GADBannerView&) override { hear("will dismiss"); }
    void adViewDidDismissScreen(GADBannerView&) override { hear("did dismiss"); }
    void adViewWillLeaveApplication(GADBannerView&) override { hear("will leave"); }

    support::Heard heard;
    Value::Dictionary lastFailure;
    std::function<void(const std::string& event)> onEvent;

private:
    void hear(const std::string& event) {
        heard(event);
        if (onEvent)
            onEvent(event);
    }
};

/// A banner on a screen, an ad server, and a page engine whose pages do what a test says.
class BannerTest : public AdsTest {
protected:
    static constexpr const char* kScriptURL = "http://static.example/afma/sdk-core-v40.js";
    static constexpr const char* kAdURL = "http://ads.example/ad?id=1";

    BannerTest()
        : banner_(makeBanner()) {
        overrideGADSetting(kGADStaticContentHost, "static.example");
        overrideGADSetting(kGADAdServerOrigin, "http://ads.example");
        application().setState(UIApplicationState::Active);
        banner_->setAdUnitID("unit");
        navigation().topViewController()->view()->addSubview(banner_);
        network().at(kScriptURL).body("function AFMA_buildAdURL() {}");
        network().at(kAdURL).body("<p>Ad</p>");
    }
    ~BannerTest() override {
        if (const auto screen =
                std::dynamic_pointer_cast<GADViewController>(navigation().modalViewController()))
            screen->relinquishScreen();
        letGoOfBanner();
        advance(10); // some objects outlive their screen briefly
        GADSafetyPolicy::setShared(std::nullopt);
        GADObjectPrivate::resetProcessState();
        overrideGADSetting(kGADStaticContentHost, "");
        overrideGADSetting(kGADAdServerOrigin, "");
    }

    GADBannerView& banner() { return *banner_; }
    /// A banner of 320 x 50 points with the recording delegate, not on screen.
    std::shared_ptr<GADBannerView> makeBanner() {
        auto view = GADBannerView::withFrame(CGRectMake(0, 366, 320, 50));
        view->setRootViewController(navigation().topViewController());
        view->setDelegate(delegate_);
        return view;
    }
    void letGoOfBanner() {
        if (banner_)
            banner_->removeFromSuperview();
        banner_.reset();
    }
    RecordingBannerDelegate& delegate() { return *delegate_; }
    /// The delegate's events since the last call.
    std::string takeEvents() { return delegate_->heard.take(); }

    support::ScriptedWebPage& page() { return *webEngine().page(); }
    /// The newest page navigates, as a script or a link does; whether that is allowed.
    bool go(const std::string& url, host::WebNavigationType type = host::WebNavigationType::Other) {
        host::WebNavigation navigation;
        navigation.url = url;
        navigation.type = type;
        const bool loads = page().navigateFrame(navigation);
        turn();
        return loads;
    }
    /// A finger touches the ad.
    void touchAd() { (void)banner().webView()->touchWillBeginInside(UITouch{}); }

    /// Asks for an ad; the script has been fetched and runs in the hidden page.
    void load() {
        banner().loadRequest(nullptr);
        advance(1);
    }
    /// The script gives the ad's address, and the ad is fetched.
    void answerScript() {
        go("gmsg://ads/loadAdURL?type=contextual&url=http://ads.example/ad%3Fid%3D1");
        advance(1);
    }
    /// Loads kAdURL's ad and puts it on the screen.
    void show() {
        load();
        answerScript();
        page().finishLoad();
        advance(0.1);
    }
    /// The ad will have that field in its head.
    support::ScriptedAnswer& adWith(const char* field, const char* value) {
        return network().at(kAdURL).body("<p>Ad</p>").header(field, value);
    }
    static int adRequests() { return GADStatistics::sharedStatistics().adRequestCount(); }
    int requestsFor(const std::string& url) {
        return static_cast<int>(std::ranges::count(network().requestedURLs(), url));
    }

private:
    std::shared_ptr<RecordingBannerDelegate> delegate_ =
        std::make_shared<RecordingBannerDelegate>();
    std::shared_ptr<GADBannerView> banner_;
};

}
