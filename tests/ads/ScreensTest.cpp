#include "ads/Browser/GADBrowserController.h"
#include "ads/Interstitial/GADInterstitial.h"
#include "ads/Notification/GADNotificationCenter.h"
#include "ads/Object/GADPrivateUtilities.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/Utility/GADIntrinsicImages.h"
#include "ads/WebApp/GADWebAppViewController.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIToolbar.h"
#include "tests/ads/BannerTest.h"

namespace vistrel {
namespace {

class AdScreensTest : public BannerTest {
protected:
    template <typename Screen>
    std::shared_ptr<Screen> present(const std::shared_ptr<UIViewController>& from) {
        return present(std::make_shared<Screen>(), banner(), from);
    }
    template <typename Screen>
    std::shared_ptr<Screen> present(std::shared_ptr<Screen> screen, GADBannerView& ad,
                                    const std::shared_ptr<UIViewController>& from) {
        screen->setDelegateManager(
            GADPrivateUtilities::privateObjectForKey<GADObjectPrivate>(&ad)->delegateManager());
        screen->presentFromViewController(from);
        return screen;
    }
    /// Closes and releases the screen.
    void close(std::shared_ptr<GADViewController> screen) {
        screen->relinquishScreen();
        screen = nullptr;
        settle();
    }
    std::shared_ptr<UIViewController> host() { return navigation().topViewController(); }
};

TEST_F(AdScreensTest, StatusBarAndIdleTimerAreRestored) {
    const std::tuple<bool, bool, double> cases[] = {{false, false, 1}, {true, false, 1},
                                                    {false, true, 1},  {true, true, 1},
                                                    {false, false, 0}, {false, true, 0.1}};
    for (const auto& [barHidden, idleDisabled, dismissedAfter] : cases) {
        application().setStatusBarHidden(barHidden);
        application().setIdleTimerDisabled(idleDisabled);
        auto screen = present<GADWebAppViewController>(host());
        EXPECT_TRUE(application().isStatusBarHidden());
        EXPECT_TRUE(application().isIdleTimerDisabled());
        EXPECT_FALSE(screen->view()->isUserInteractionEnabled());
        advance(dismissedAfter);
        EXPECT_EQ(screen->view()->isUserInteractionEnabled(), dismissedAfter == 1);
        screen->relinquishScreen();
        close(std::move(screen));
        EXPECT_EQ(application().isStatusBarHidden(), barHidden);
        EXPECT_EQ(application().isIdleTimerDisabled(), idleDisabled);
        EXPECT_EQ(navigation().modalViewController(), nullptr);
        EXPECT_EQ(takeEvents(), "will present, will dismiss, did dismiss");
    }
}

TEST_F(AdScreensTest, AScreenOpenedFromAWebAppReturnsToItWithoutEvents) {
    auto webApp = present<GADWebAppViewController>(host());
    settle();
    auto browser = present<GADBrowserController>(webApp);
    settle();
    EXPECT_EQ(webApp->modalViewController(), browser);
    browser = nullptr;
    EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, "Done"));
    EXPECT_EQ(navigation().modalViewController(), webApp);
    EXPECT_TRUE(application().isStatusBarHidden());
    EXPECT_EQ(takeEvents(), "will present");
    webApp = nullptr;
    EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, "Close"));
    EXPECT_FALSE(application().isStatusBarHidden());
    EXPECT_EQ(takeEvents(), "will dismiss, did dismiss");
}

TEST_F(AdScreensTest, ADelegateMayDestroyTheAdInsideEachCallback) {
    for (const std::string event : {"will present", "will dismiss", "did dismiss"}) {
        auto view = makeBanner();
        delegate().onEvent = [&](const std::string& now) {
            if (now == event)
                view.reset();
        };
        auto screen = present(std::make_shared<GADBrowserController>(), *view, host());
        settle();
        close(std::move(screen));
        EXPECT_EQ(view, nullptr) << event;
        EXPECT_FALSE(application().isStatusBarHidden()) << event;
    }
}

TEST_F(AdScreensTest, WithoutAControllerNothingIsPresented) {
    present<GADWebAppViewController>(nullptr);
    EXPECT_THAT(logLines(),
                Contains("<GAD> No UIViewController supplied to the ad.  Cannot continue."));
    EXPECT_FALSE(application().isStatusBarHidden());
    EXPECT_EQ(takeEvents(), "");
}

TEST_F(AdScreensTest, ABrowserThatHasNotBeenShownHasNothingToDo) {
    GADBrowserController browser;
    browser.back();
    browser.forward();
    browser.reload();
    browser.stop();
    browser.openInSafari();
    EXPECT_FALSE(GADStatistics::sharedStatistics().parameters().contains("pcbo"));
}

TEST_F(AdScreensTest, TheToolbarFollowsThePage) {
    for (const char* label : {"Reload", "Spinner", "View in Safari", "Done"})
        deterministicHost().translations[label] = std::string(1, *label) + ".";
    auto browser = present<GADBrowserController>(host());
    browser->loadReferringURL(NSURL::URLWithString("http://shop.example/1"),
                              NSURL::URLWithString("http://ads.example/ad"));
    settle();
    EXPECT_EQ(browser->toolbar()->frame().size.height, 44);
    EXPECT_EQ(browser->webView()->frame().size.height, 480 - 44);
    const auto state = [&] {
        std::string text;
        for (const auto& item : browser->toolbar()->items()) {
            if (!item->isFlexibleSpace())
                text += item->accessibilityLabel() + (item->isEnabled() ? "+ " : "- ");
        }
        return text;
    };
    EXPECT_EQ(state(), "Back- Forward- S.+ V.- D.+ ");
    page().finishLoad();
    EXPECT_EQ(state(), "Back- Forward- R.+ V.+ D.+ ");
    page().clickLink("http://shop.example/2");
    page().finishLoad();
    EXPECT_EQ(state(), "Back+ Forward- R.+ V.+ D.+ ");
    EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, "Back"));
    turn();
    EXPECT_EQ(state(), "Back- Forward+ S.+ V.- D.+ ");
    page().failLoad({-1, "gone", ""});
    EXPECT_EQ(state(), "Back- Forward+ R.+ V.+ D.+ ");
    takeEvents();
    browser->openInSafari();
    page().clickLink("tel:1");
    advance(1);
    EXPECT_EQ(takeEvents(), "will leave, will leave");
    EXPECT_TRUE(GADStatistics::sharedStatistics().parameters().contains("pcbo"));
    close(std::move(browser));
}

TEST_F(AdScreensTest, ABrowserThatNeverLoadedClosesWhenTheApplicationReturns) {
    for (const bool loaded : {false, true}) {
        auto browser = present<GADBrowserController>(host());
        browser->load(NSURL::URLWithString("http://shop.example/"));
        settle();
        if (loaded)
            page().finishLoad();
        application().setState(UIApplicationState::Background);
        application().setState(UIApplicationState::Active);
        settle();
        EXPECT_EQ(navigation().modalViewController() != nullptr, loaded);
        close(std::move(browser));
    }
}

TEST_F(AdScreensTest, TheOrientationSettingDecidesWhichRotationsAreAllowed) {
    const std::tuple<const char*, bool, bool> cases[] = {{"any", true, true},
                                                         {"portrait", true, false},
                                                         {"landscape", false, true},
                                                         {"Landscape", true, true},
                                                         {"", true, true}};
    GADWebAppViewController screen;
    using Orientation = UIInterfaceOrientation;
    for (const auto& [text, portrait, landscape] : cases) {
        screen.setSupportedOrientations(GADViewController::orientationFromString(text));
        for (const auto upright : {Orientation::Portrait, Orientation::PortraitUpsideDown})
            EXPECT_EQ(screen.shouldAutorotateToInterfaceOrientation(upright), portrait) << text;
        for (const auto lying : {Orientation::LandscapeLeft, Orientation::LandscapeRight})
            EXPECT_EQ(screen.shouldAutorotateToInterfaceOrientation(lying), landscape) << text;
    }
}

TEST_F(AdScreensTest, AWebAppsPageIsToldThatItIsShownAndItsScreenTakesSettings) {
    auto screen = present<GADWebAppViewController>(host());
    screen->load(*NSURL::URLWithString("http://shop.example/"));
    settle();
    EXPECT_THAT(page().calls(), testing::Not(Contains(HasSubstr("'onshow'"))));
    page().finishLoad();
    advance(1);
    EXPECT_THAT(page().calls(), Contains(HasSubstr("'onshow'")));
    GADNotificationCenter::defaultCenter().postNotification(
        "settings", screen->view().get(),
        Value::Dictionary{{"supportedorientations", "landscape"}});
    using Orientation = UIInterfaceOrientation;
    EXPECT_TRUE(screen->shouldAutorotateToInterfaceOrientation(Orientation::LandscapeLeft));
    EXPECT_FALSE(screen->shouldAutorotateToInterfaceOrientation(Orientation::Portrait));
    close(std::move(screen));
}

TEST_F(AdScreensTest, TheBuiltInPicturesAreDecoded) {
    for (const auto& image :
         {GADIntrinsicImages::closeButton(), GADIntrinsicImages::browserBackButton(),
          GADIntrinsicImages::browserForwardButton()}) {
        ASSERT_TRUE(image);
        EXPECT_EQ(image->bitmap()->height(), 2 * image->size().height);
    }
    for (const char* broken : {"bm8gcGljdHVyZQ==", "*"})
        EXPECT_EQ(GADIntrinsicImages::createImageFromEncoding(broken), nullptr);
}

TEST_F(AdScreensTest, AnInterstitialIsReadyOnceItsPageHasLoadedAndPingsTwice) {
    network().at(kAdURL).body("<b>Ad</b>").header("X-Afma-Tracking-Urls", "http://t.example/shown");
    network().at("http://t.example/shown").body("ok");
    auto ad = GADInterstitial::make();
    ad->presentFromRootViewController(host());
    EXPECT_THAT(logLines(), Contains("<GAD> Cannot present interstitial.  It is not ready."));
    ad->loadRequest(nullptr);
    advance(1);
    answerScript();
    EXPECT_FALSE(ad->isReady());
    page().finishLoad();
    EXPECT_TRUE(ad->isReady());
    ad->presentFromRootViewController(host());
    settle();
    EXPECT_EQ(page().loadedHTML(), "<b>Ad</b>");
    EXPECT_EQ(requestsFor("http://t.example/shown"), 2);
    ad = nullptr; // its screen stays until it is closed
    settle();
    EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, "Close"));
    EXPECT_EQ(navigation().modalViewController(), nullptr);
}

TEST_F(AdScreensTest, AStartUpInterstitialAlwaysRestoresTheWindow) {
    constexpr const char* kLoadAd = "gmsg://ads/loadAdURL?url=http://ads.example/ad%3Fid%3D1";
    // The script's answer may be missing; the last two: seconds until the window is the host's
    // again, 0 when the user closes the ad, and what is reported.
    const std::tuple<const char*, float, const char*, const char*, double, std::string> cases[] = {
        {"in time", 5, kLoadAd, "<b>Ad</b>", 0, ""},
        {"no ad", 5, kLoadAd, "  \n", 0.5, "aoi_nofill"},
        {"refused", 5, "gmsg://ads/unableToServe", "", 0.5, ""},
        {"never, whole seconds", 2.9F, nullptr, "", 2.1, "aoi_timedout"},
        {"zero", 0, nullptr, "", 0, ""},
    };
    (void)navigation(); // is in the window before the ad is
    for (const auto& [what, timeout, answer, html, restoredBy, reported] : cases) {
        SCOPED_TRACE(what);
        network().at(kAdURL).body(html);
        NSUserDefaults::standardUserDefaults().setFloatForKey(timeout, "applicationTimeout");
        const auto before = window().subviews();
        GADInterstitial::make()->loadAndDisplayRequestUsingWindowInitialImage(
            nullptr, std::static_pointer_cast<UIWindow>(window().shared_from_this()), nullptr);
        if (timeout > 0) {
            EXPECT_EQ(window().subviews().size(), 1U);
            EXPECT_TRUE(application().isStatusBarHidden());
        }
        if (answer) {
            ASSERT_TRUE(runUntil([this] { return webEngine().page() != nullptr; }, 1));
            go(answer);
            advance(0.2);
            if (webEngine().page())
                page().finishLoad();
        }
        if (restoredBy > 0) {
            advance(restoredBy);
        } else if (timeout > 0) {
            settle();
            EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, "Close"));
        }
        EXPECT_EQ(window().subviews(), before);
        EXPECT_FALSE(application().isStatusBarHidden());
        const auto report = GADStatistics::sharedStatistics().parameters();
        for (const char* flag : {"aoi_nofill", "aoi_timedout"})
            EXPECT_EQ(report.contains(flag), reported == flag);
        advance(4);
    }
    EXPECT_THAT(logLines(), Contains("<GAD> Interstitial request timed out."));
    EXPECT_THAT(logLines(), Contains("<GAD> Interstitial has zero timeout.  Not displaying."));
}

}
}
