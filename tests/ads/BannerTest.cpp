#include "tests/ads/BannerTest.h"

#include "ads/GADSettings.h"
#include "ads/Object/GADObjectPrivate.h"
#include "ads/Object/GADRequestError.h"
#include "ads/Opener/GADSafetyPolicy.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/View/GADWebView.h"
#include "ads/ViewController/GADViewController.h"
#include "platform/foundation/NSNotificationCenter.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UITouch.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace vistrel {

void RecordingBannerDelegate::hear(std::string event) {
    events.push_back(std::move(event));
    if (onEvent)
        onEvent();
}

void RecordingBannerDelegate::adViewDidFailToReceiveAdWithError(GADBannerView&,
                                                                const GADRequestError& error) {
    hear("failed " + std::to_string(error.code()));
}

BannerTest::BannerTest()
    : window_(std::make_shared<UIWindow>())
    , navigation_(
          UINavigationController::withRootViewController(std::make_shared<UIViewController>()))
    , banner_(GADBannerView::withFrame(CGRectMake(0, 366, 320, 50)))
    , delegate_(std::make_shared<RecordingBannerDelegate>()) {
    overrideGADSetting(kGADStaticContentHost, "static.example");
    overrideGADSetting(kGADAdServerOrigin, "http://ads.example");
    window_->addSubview(navigation_->view());
    window_->makeKeyAndVisible();
    UIApplication::sharedApplication().setState(UIApplicationState::Active);
    banner_->setAdUnitID("unit");
    banner_->setRootViewController(navigation_->topViewController());
    banner_->setDelegate(delegate_);
    navigation_->topViewController()->view()->addSubview(banner_);
    network().at(kScriptURL).body("function AFMA_buildAdURL() {}");
    network().at(kAdURL).body("<p>Ad</p>");
}

BannerTest::~BannerTest() {
    if (const auto screen =
            std::dynamic_pointer_cast<GADViewController>(navigation_->modalViewController()))
        screen->relinquishScreen();
    advance(3);
    letGoOfBanner();
    navigation_.reset();
    window_.reset();
    advance(10); // what lives a little longer than its screen
    GADSafetyPolicy::setShared(std::nullopt);
    GADObjectPrivate::resetProcessState();
    overrideGADSetting(kGADStaticContentHost, "");
    overrideGADSetting(kGADAdServerOrigin, "");
    UIApplication::resetSharedApplication();
}

void BannerTest::letGoOfBanner() {
    if (banner_)
        banner_->removeFromSuperview();
    banner_.reset();
}

bool BannerTest::go(const std::string& url, host::WebNavigationType type) {
    host::WebNavigation navigation;
    navigation.url = url;
    navigation.type = type;
    const bool loads = page().navigateFrame(navigation);
    turn();
    return loads;
}

void BannerTest::touchAd() {
    (void)banner().webView()->touchWillBeginInside(UITouch{});
}

void BannerTest::load() {
    banner().loadRequest(nullptr);
    advance(1);
}

void BannerTest::answerScript(const std::string& url) {
    std::string escaped;
    for (const char character : url) {
        if (character == '?' || character == '=' || character == '&') {
            constexpr const char* digits = "0123456789ABCDEF";
            escaped += {'%', digits[character / 16], digits[character % 16]};
        } else {
            escaped += character;
        }
    }
    go("gmsg://ads/loadAdURL?type=contextual&url=" + escaped);
    advance(1);
}

void BannerTest::show() {
    load();
    answerScript();
    page().finishLoad();
    advance(0.1);
}

int BannerTest::requestsFor(const std::string& url) {
    return static_cast<int>(std::ranges::count(network().requestedURLs(), url));
}

std::string BannerTest::takeEvents() {
    std::string text;
    for (const auto& event : std::exchange(delegate().events, {}))
        text += (text.empty() ? "" : ", ") + event;
    return text;
}

namespace {

using testing::Contains;
using testing::HasSubstr;

TEST_F(BannerTest, AnAdIsBuiltFetchedShownAndCountedOnce) {
    network()
        .at(kAdURL)
        .body("<p>Ad</p>")
        .header("X-Afma-Tracking-Urls", "http://track.example/a  http://track.example/b");
    load();
    EXPECT_THAT(page().loadedHTML(), HasSubstr("function AFMA_buildAdURL() {}"));
    EXPECT_THAT(page().loadedHTML(), HasSubstr("\"slotname\":\"unit\""));
    EXPECT_EQ(page().calls().front(), "loadHTML http://ads.example");
    answerScript();
    EXPECT_EQ(page().loadedHTML(), "<p>Ad</p>");
    EXPECT_EQ(page().session(), host::WebSession::Guest);
    EXPECT_TRUE(banner().webView()->isHidden());
    EXPECT_EQ(takeEvents(), "");
    page().finishLoad();
    advance(1);
    EXPECT_FALSE(banner().webView()->isHidden());
    EXPECT_EQ(takeEvents(), "received");
    EXPECT_EQ(requestsFor("http://track.example/a"), 1);
    EXPECT_EQ(requestsFor("http://track.example/b"), 1);
    EXPECT_EQ(webEngine().pages().size(), 1U) << "the hidden page is gone";
    EXPECT_TRUE(GADStatistics::sharedStatistics().timingNamed("ppcl"));
}

struct Failure {
    const char* name;
    const char* events;
    bool refreshes;
    const char* log = nullptr; ///< null: nothing is logged
    int scriptStatus = 200;
    const char* script = "script";
    const char* answer = nullptr; ///< of the script; null: the ad's address
    int adStatus = 200;           ///< 0: the connection is lost
    const char* ad = "<p>Ad</p>";
};

class FailureTest : public BannerTest, public testing::WithParamInterface<Failure> {};

TEST_P(FailureTest, IsReportedOnceAndRefreshedOnlyAfterTheAdWasAskedFor) {
    const Failure& failure = GetParam();
    network().at(kScriptURL).status(failure.scriptStatus).body(failure.script);
    auto& ad = network().at(kAdURL);
    if (failure.adStatus == 0)
        ad.fails(host::TransferErrorKind::ConnectionLost, "lost");
    else
        ad.status(failure.adStatus).body(failure.ad).header("X-Afma-Refresh-Rate", "30");
    load();
    if (failure.answer) {
        go(failure.answer);
        advance(1);
    } else if (webEngine().page()) {
        answerScript();
    }
    EXPECT_EQ(takeEvents(), failure.events);
    EXPECT_EQ(logLines(),
              failure.log ? std::vector<std::string>{failure.log} : std::vector<std::string>{});
    EXPECT_TRUE(banner().webView()->isHidden());
    advance(31);
    EXPECT_EQ(GADStatistics::sharedStatistics().adRequestCount(), failure.refreshes ? 2 : 1);
}

INSTANTIATE_TEST_SUITE_P(
    Ads, FailureTest,
    testing::Values(
        Failure{
            .name = "ScriptMissing", .events = "failed 2", .refreshes = false, .scriptStatus = 404},
        Failure{.name = "ScriptEmpty", .events = "failed 2", .refreshes = false, .script = ""},
        Failure{.name = "Errors",
                .events = "failed 0",
                .refreshes = false,
                .answer = "gmsg://ads/loadAdURL?errors=bad"},
        Failure{.name = "InvalidRequest",
                .events = "failed 0",
                .refreshes = false,
                .log = "<GAD> Invalid Request: {\n    why = unit;\n}",
                .answer = "gmsg://ads/invalidRequest?why=unit"},
        Failure{.name = "UnableToServe",
                .events = "failed 0",
                .refreshes = false,
                .log = "<GAD> Unable to serve: {\n}",
                .answer = "gmsg://ads/unableToServe"},
        Failure{.name = "NoAd", .events = "failed 1", .refreshes = true, .ad = " \n\t\r\n"},
        Failure{.name = "BadRequest",
                .events = "failed 0",
                .refreshes = true,
                .log = "<GAD> Server rejected ad parameters.  Typically this is because the ad "
                       "unit ID is incorrect.",
                .adStatus = 400},
        Failure{.name = "ServerError", .events = "failed 3", .refreshes = true, .adStatus = 503},
        Failure{.name = "ConnectionLost", .events = "failed 2", .refreshes = false, .adStatus = 0}),
    [](const testing::TestParamInfo<Failure>& row) { return std::string(row.param.name); });

TEST_F(BannerTest, WithoutARootViewControllerNothingIsFetched) {
    banner().setRootViewController({});
    load();
    EXPECT_EQ(takeEvents(), "failed 0");
    EXPECT_THAT(logLines(),
                Contains("<GAD> Must set the rootViewController property of GADBannerView before "
                         "calling loadRequest:"));
    EXPECT_TRUE(network().requests().empty());
}

TEST_F(BannerTest, LoadsAreIgnoredWhileOneRunsAndWhileTheApplicationIsNotActive) {
    load();
    load(); // building
    answerScript();
    load(); // loading the page
    EXPECT_EQ(requestsFor(kAdURL), 1);
    page().finishLoad();
    turn();
    EXPECT_EQ(takeEvents(), "received");

    UIApplication::sharedApplication().finishLaunching();
    UIApplication::sharedApplication().setState(UIApplicationState::Background);
    network().forgetRequests();
    load();
    EXPECT_EQ(webEngine().pages().size(), 1U);
    EXPECT_EQ(GADStatistics::sharedStatistics().adRequestCount(), 1);
}

TEST_F(BannerTest, TheScriptIsFetchedOnceADayAndThenRevalidated) {
    network()
        .at(kScriptURL)
        .body("script")
        .header("Last-Modified", "Sat, 01 Jan 2011 12:00:00 GMT");
    show();
    show();
    EXPECT_EQ(requestsFor(kScriptURL), 1);
    advance(86400);
    network().at(kScriptURL).status(304);
    network().forgetRequests();
    load();
    ASSERT_EQ(requestsFor(kScriptURL), 1);
    EXPECT_EQ(support::ScriptedNetwork::header(network().requests().front(), "If-Modified-Since"),
              "Sat, 01 Jan 2011 12:00:00");
    EXPECT_THAT(page().loadedHTML(), HasSubstr("<script>script</script>"));
}

TEST_F(BannerTest, RefreshesStopInTheBackgroundAndUnderFullScreenScreens) {
    network().at(kAdURL).body("<p>Ad</p>").header("X-Afma-Refresh-Rate", "30");
    const auto requests = [] {
        return GADStatistics::sharedStatistics().adRequestCount();
    };
    UIApplication& application = UIApplication::sharedApplication();
    auto& center = NSNotificationCenter::defaultCenter();
    show();
    advance(28);
    EXPECT_EQ(requests(), 1);
    advance(2);
    EXPECT_EQ(requests(), 2) << "one timer, thirty seconds after the ad came";
    answerScript();
    page().finishLoad();
    application.setState(UIApplicationState::Background);
    advance(100);
    EXPECT_EQ(requests(), 2);
    application.setState(UIApplicationState::Active);
    center.postNotification("GADViewControllerWillPresentFullScreen", this);
    advance(100);
    EXPECT_EQ(requests(), 2);
    center.postNotification("GADViewControllerDidRelinquishFullScreen", this);
    advance(29);
    EXPECT_EQ(requests(), 2);
    advance(1.5);
    EXPECT_EQ(requests(), 3);
}

TEST_F(BannerTest, TheDelegateMayDestroyTheBannerInACallback) {
    for (const char* body : {"<p>Ad</p>", " "}) {
        auto view = GADBannerView::withFrame(CGRectMake(0, 0, 320, 50));
        view->setRootViewController(root().weak_from_this());
        view->setDelegate(delegateOf());
        network().at(kAdURL).body(body);
        delegate().onEvent = [&view] {
            view.reset();
        };
        view->loadRequest(nullptr);
        advance(1);
        answerScript();
        if (webEngine().page())
            page().finishLoad();
        advance(5);
        EXPECT_EQ(view, nullptr) << body;
        EXPECT_TRUE(webEngine().pages().empty()) << body;
        EXPECT_EQ(network().runningTransfers(), 0) << body;
    }
}

}
}
