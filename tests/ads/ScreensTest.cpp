#include "ads/Browser/GADBrowserController.h"
#include "ads/Delegate/GADBannerViewDelegate.h"
#include "ads/Delegate/GADInterstitialDelegate.h"
#include "ads/GADSettings.h"
#include "ads/Interstitial/GADInterstitial.h"
#include "ads/Object/GADObjectPrivate.h"
#include "ads/Object/GADPrivateUtilities.h"
#include "ads/Object/GADRequestError.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/Utility/GADIdentifierUtilities.h"
#include "ads/Utility/GADIntrinsicImages.h"
#include "ads/View/GADBannerView.h"
#include "ads/View/GADWebView.h"
#include "ads/WebApp/GADWebAppViewController.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/graphics/Bitmap.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIToolbar.h"
#include "tests/ads/AdsTest.h"
#include "tests/support/ui/ScreenTest.h"

#include <gmock/gmock.h>

namespace vistrel {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// Writes an ad's events down.
class Recorder : public GADBannerViewDelegate, public GADInterstitialDelegate {
public:
    void adViewWillPresentScreen(GADBannerView&) override { note("willPresent"); }
    void adViewWillDismissScreen(GADBannerView&) override { note("willDismiss"); }
    void adViewDidDismissScreen(GADBannerView&) override { note("didDismiss"); }
    void adViewWillLeaveApplication(GADBannerView&) override { note("willLeave"); }
    void interstitialDidReceiveAd(GADInterstitial&) override { note("received"); }
    void interstitialDidFailToReceiveAdWithError(GADInterstitial&,
                                                 const GADRequestError& error) override {
        note("failed " + std::to_string(error.code()));
    }
    void note(const std::string& event) {
        events.push_back(event);
        if (onEvent)
            onEvent(event);
    }

    std::vector<std::string> events;
    std::function<void(const std::string&)> onEvent;
};

class AdScreensTest : public support::ScreenTest {
protected:
    AdScreensTest() {
        GADObjectPrivate::resetProcessState();
        GADDeviceEnvironment::install(phone_);
        deterministicHost().settings["ads/static-content-host"] = "static.example";
        network().at("http://static.example/afma/sdk-core-v40.js").body("/* script */");
        banner_ = GADBannerView::withFrame(CGRectMake(0, 0, 320, 50));
        banner_->setDelegate(recorder_);
    }
    ~AdScreensTest() override {
        advance(3); // web apps are emptied two seconds after they went
        banner_.reset();
        GADStatistics::releaseSharedStatistics();
        GADIdentifierUtilities::resetSharedInstance();
        GADDeviceEnvironment::install(nullptr);
    }

    template <typename Screen>
    std::shared_ptr<Screen> present(const std::shared_ptr<UIViewController>& from) {
        const auto screen = std::make_shared<Screen>();
        screen->setDelegateManager(
            GADPrivateUtilities::privateObjectForKey<GADObjectPrivate>(banner_.get())
                ->delegateManager());
        screen->presentFromViewController(from);
        return screen;
    }
    std::shared_ptr<UIViewController> host() { return navigation().topViewController(); }
    UIApplication& application() { return UIApplication::sharedApplication(); }

    /// Takes a load that has begun to the shown ad, or to what `answer` makes of it.
    void answerWith(const std::string& command, bool finishes = true) {
        ASSERT_TRUE(runUntil([this] { return webEngine().page() != nullptr; }, 1));
        webEngine().page()->clickLink("gmsg://ads/" + command);
        advance(0.2);
        if (finishes && webEngine().page())
            webEngine().page()->finishLoad();
    }
    support::ScriptedAnswer& serveAd(const std::string& html) {
        return network().at("http://ads.example/ad").body(html);
    }

    std::shared_ptr<ScriptedDevice> phone_ = std::make_shared<ScriptedDevice>();
    std::shared_ptr<Recorder> recorder_ = std::make_shared<Recorder>();
    std::shared_ptr<GADBannerView> banner_;
};

constexpr const char* kLoadAd = "loadAdURL?url=http://ads.example/ad&type=grokruf";

TEST_F(AdScreensTest, TheHostGetsItsStatusBarAndIdleTimerBackAsTheyWere) {
    const struct {
        bool barHidden;
        bool idleDisabled;
        double dismissedAfter; ///< seconds from the presentation
    } cases[] = {{false, false, 1}, {true, false, 1},  {false, true, 1},
                 {true, true, 1},   {false, false, 0}, {false, true, 0.1}};
    for (const auto& [barHidden, idleDisabled, dismissedAfter] : cases) {
        recorder_->events.clear();
        application().setStatusBarHidden(barHidden);
        application().setIdleTimerDisabled(idleDisabled);
        auto screen = present<GADWebAppViewController>(host());
        EXPECT_TRUE(application().isStatusBarHidden());
        EXPECT_TRUE(application().isIdleTimerDisabled());
        EXPECT_FALSE(screen->view()->isUserInteractionEnabled());
        advance(dismissedAfter);
        EXPECT_EQ(screen->view()->isUserInteractionEnabled(), dismissedAfter == 1);
        screen->relinquishScreen();
        screen->relinquishScreen();
        screen = nullptr;
        settle();
        EXPECT_EQ(application().isStatusBarHidden(), barHidden);
        EXPECT_EQ(application().isIdleTimerDisabled(), idleDisabled);
        EXPECT_EQ(navigation().modalViewController(), nullptr);
        EXPECT_THAT(recorder_->events, ElementsAre("willPresent", "willDismiss", "didDismiss"));
    }
}

TEST_F(AdScreensTest, AScreenOpenedFromAWebAppReturnsToItAndTellsNobody) {
    auto webApp = present<GADWebAppViewController>(host());
    settle();
    auto browser = present<GADBrowserController>(webApp);
    settle();
    EXPECT_EQ(webApp->modalViewController(), browser);
    EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, "Done"));
    browser = nullptr;
    settle();
    EXPECT_EQ(navigation().modalViewController(), webApp);
    EXPECT_TRUE(application().isStatusBarHidden());
    EXPECT_THAT(recorder_->events, ElementsAre("willPresent"));
    EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, "Close"));
    webApp = nullptr;
    settle();
    EXPECT_FALSE(application().isStatusBarHidden());
    EXPECT_THAT(recorder_->events, ElementsAre("willPresent", "willDismiss", "didDismiss"));
}

TEST_F(AdScreensTest, ADelegateMayDestroyTheAdInsideEachCallback) {
    for (const std::string event : {"willPresent", "willDismiss", "didDismiss"}) {
        banner_ = GADBannerView::withFrame(CGRectMake(0, 0, 320, 50));
        banner_->setDelegate(recorder_);
        recorder_->onEvent = [&](const std::string& now) {
            if (now == event)
                banner_.reset();
        };
        auto screen = present<GADBrowserController>(host());
        settle();
        screen->relinquishScreen();
        screen = nullptr;
        settle();
        EXPECT_EQ(banner_, nullptr) << event;
        EXPECT_FALSE(application().isStatusBarHidden()) << event;
    }
}

TEST_F(AdScreensTest, WithoutAControllerNothingIsPresented) {
    present<GADWebAppViewController>(nullptr);
    EXPECT_THAT(logLines(),
                Contains("<GAD> No UIViewController supplied to the ad.  Cannot continue."));
    EXPECT_FALSE(application().isStatusBarHidden());
    EXPECT_THAT(recorder_->events, IsEmpty());
}

TEST_F(AdScreensTest, TheToolbarFollowsThePage) {
    auto browser = present<GADBrowserController>(host());
    browser->loadReferringURL(NSURL::URLWithString("http://shop.example/1"),
                              NSURL::URLWithString("http://ads.example/ad"));
    settle();
    EXPECT_EQ(browser->toolbar()->frame().size.height, 44);
    EXPECT_EQ(browser->webView()->frame().size.height, 480 - 44);
    auto& page = *webEngine().page();
    const auto state = [&] {
        std::string text;
        for (const auto& item : browser->toolbar()->items()) {
            if (!item->isFlexibleSpace())
                text += item->accessibilityLabel() + (item->isEnabled() ? "+ " : "- ");
        }
        return text;
    };
    EXPECT_EQ(state(), "Back- Forward- Spinner+ View in Safari- Done+ ");
    page.finishLoad();
    EXPECT_EQ(state(), "Back- Forward- Reload+ View in Safari+ Done+ ");
    page.clickLink("http://shop.example/2");
    page.finishLoad();
    EXPECT_EQ(state(), "Back+ Forward- Reload+ View in Safari+ Done+ ");
    EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, "Back"));
    turn();
    EXPECT_EQ(state(), "Back- Forward+ Spinner+ View in Safari- Done+ ");
    page.failLoad({-1, "gone", ""});
    EXPECT_EQ(state(), "Back- Forward+ Reload+ View in Safari+ Done+ ");
    browser->openInSafari();
    advance(1);
    EXPECT_THAT(recorder_->events, Contains("willLeave"));
    EXPECT_TRUE(GADStatistics::sharedStatistics().parameters().contains("pcbo"));
    browser->relinquishScreen();
    browser = nullptr;
    settle();
}

TEST_F(AdScreensTest, ABrowserThatNeverLoadedClosesWhenTheApplicationReturns) {
    for (const bool loaded : {false, true}) {
        auto browser = present<GADBrowserController>(host());
        browser->load(NSURL::URLWithString("http://shop.example/"));
        settle();
        if (loaded)
            webEngine().page()->finishLoad();
        application().setState(UIApplicationState::Background);
        application().setState(UIApplicationState::Active);
        settle();
        EXPECT_EQ(navigation().modalViewController() != nullptr, loaded);
        browser->relinquishScreen();
        browser = nullptr;
        settle();
    }
}

TEST_F(AdScreensTest, TheOrientationSettingDecidesAboutRotations) {
    const struct {
        const char* text;
        bool portrait;
        bool landscape;
    } cases[] = {{"any", true, true},
                 {"portrait", true, false},
                 {"landscape", false, true},
                 {"Landscape", true, true},
                 {"", true, true}};
    GADWebAppViewController screen;
    for (const auto& [text, portrait, landscape] : cases) {
        screen.setSupportedOrientations(GADViewController::orientationFromString(text));
        using Orientation = UIInterfaceOrientation;
        for (const auto upright : {Orientation::Portrait, Orientation::PortraitUpsideDown})
            EXPECT_EQ(screen.shouldAutorotateToInterfaceOrientation(upright), portrait) << text;
        for (const auto lying : {Orientation::LandscapeLeft, Orientation::LandscapeRight})
            EXPECT_EQ(screen.shouldAutorotateToInterfaceOrientation(lying), landscape) << text;
    }
}

TEST_F(AdScreensTest, TheBuiltInPicturesHaveTheirSizesAndAreNotBlank) {
    const struct {
        std::shared_ptr<const UIImage> image;
        double points;
    } cases[] = {{GADIntrinsicImages::closeButton(), 25},
                 {GADIntrinsicImages::browserBackButton(), 27},
                 {GADIntrinsicImages::browserForwardButton(), 27}};
    for (const auto& [image, points] : cases) {
        ASSERT_TRUE(image);
        EXPECT_EQ(image->size().width, points);
        EXPECT_EQ(image->bitmap()->height(), 2 * points);
    }
    EXPECT_EQ(GADIntrinsicImages::createImageFromEncoding("bm8gcGljdHVyZQ=="), nullptr);
    EXPECT_EQ(GADIntrinsicImages::createImageFromEncoding("*"), nullptr);
}

TEST_F(AdScreensTest, AnInterstitialIsReadyWhenItsPageHasLoadedAndPingsTwice) {
    serveAd("<b>Ad</b>").header("X-Afma-Tracking-Urls", "http://t.example/shown");
    network().at("http://t.example/shown").body("ok");
    auto ad = GADInterstitial::make();
    ad->presentFromRootViewController(host());
    EXPECT_THAT(logLines(), Contains("<GAD> Cannot present interstitial.  It is not ready."));
    ad->loadRequest(nullptr);
    answerWith(kLoadAd, false);
    EXPECT_FALSE(ad->isReady());
    ASSERT_TRUE(webEngine().page());
    webEngine().page()->finishLoad();
    EXPECT_TRUE(ad->isReady());
    ad->presentFromRootViewController(host());
    settle();
    EXPECT_EQ(webEngine().page()->loadedHTML(), "<b>Ad</b>");
    const auto asked = network().requestedURLs();
    EXPECT_EQ(std::count(asked.begin(), asked.end(), "http://t.example/shown"), 2);
    ad = nullptr; // its screen stays until it is closed
    settle();
    EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, "Close"));
    settle();
    EXPECT_EQ(navigation().modalViewController(), nullptr);
}

TEST_F(AdScreensTest, AStartUpInterstitialGivesTheWindowBackWhateverBecomesOfIt) {
    const struct {
        const char* what;
        float timeout;
        const char* answer; ///< of the script; null: none
        const char* html;
        double restoredBy; ///< seconds after which the window is the host's again
        const char* reports;
    } cases[] = {
        {"in time", 5, kLoadAd, "<b>Ad</b>", 0, nullptr},
        {"no ad", 5, kLoadAd, "  \n", 0.5, "aoi_nofill"},
        {"refused", 5, "unableToServe", "", 0.5, nullptr},
        {"never, whole seconds", 2.9F, nullptr, "", 2.1, "aoi_timedout"},
        {"zero", 0, nullptr, "", 0, nullptr},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.what);
        serveAd(each.html);
        auto ad = GADInterstitial::make();
        NSUserDefaults::standardUserDefaults().setFloatForKey(each.timeout, "applicationTimeout");
        const auto before = window().subviews();
        ad->loadAndDisplayRequestUsingWindowInitialImage(
            nullptr, std::static_pointer_cast<UIWindow>(window().shared_from_this()), nullptr);
        ad = nullptr;
        if (each.timeout > 0) {
            EXPECT_EQ(window().subviews().size(), 1U);
            EXPECT_TRUE(application().isStatusBarHidden());
        }
        if (each.answer)
            answerWith(each.answer);
        if (each.restoredBy == 0 && each.timeout > 0) {
            settle();
            EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, "Close"));
            settle();
        } else if (each.restoredBy > 0) {
            advance(each.restoredBy);
        }
        EXPECT_EQ(window().subviews(), before);
        EXPECT_FALSE(application().isStatusBarHidden());
        const auto report = GADStatistics::sharedStatistics().parameters();
        for (const char* flag : {"aoi_nofill", "aoi_timedout"})
            EXPECT_EQ(report.contains(flag), each.reports && std::string(each.reports) == flag);
        advance(4);
    }
    EXPECT_THAT(logLines(), Contains("<GAD> Interstitial request timed out."));
    EXPECT_THAT(logLines(), Contains("<GAD> Interstitial has zero timeout.  Not displaying."));
}

}
}
