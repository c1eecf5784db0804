#include "tests/ads/BannerTest.h"

#include "ads/GADSettings.h"
#include "ads/Object/GADObjectPrivate.h"
#include "ads/Object/GADRequestError.h"
#include "ads/Opener/GADSafetyPolicy.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/View/GADWebView.h"
#include "ads/ViewController/GADViewController.h"
#include "platform/foundation/NSNotificationCenter.h"
#include "platform/uikit/UITouch.h"

namespace vistrel {

void RecordingBannerDelegate::hear(const std::string& event) {
    events += (events.empty() ? "" : ", ") + event;
    if (onEvent)
        onEvent(event);
}

void RecordingBannerDelegate::adViewDidFailToReceiveAdWithError(GADBannerView&,
                                                                const GADRequestError& error) {
    hear("failed " + std::to_string(error.code()));
}

BannerTest::BannerTest()
    : banner_(makeBanner()) {
    overrideGADSetting(kGADStaticContentHost, "static.example");
    overrideGADSetting(kGADAdServerOrigin, "http://ads.example");
    application().setState(UIApplicationState::Active);
    banner_->setAdUnitID("unit");
    navigation().topViewController()->view()->addSubview(banner_);
    network().at(kScriptURL).body("function AFMA_buildAdURL() {}");
    network().at(kAdURL).body("<p>Ad</p>");
}

BannerTest::~BannerTest() {
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

std::shared_ptr<GADBannerView> BannerTest::makeBanner() {
    auto view = GADBannerView::withFrame(CGRectMake(0, 366, 320, 50));
    view->setRootViewController(navigation().topViewController());
    view->setDelegate(delegate_);
    return view;
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

void BannerTest::answerScript() {
    go("gmsg://ads/loadAdURL?type=contextual&url=http://ads.example/ad%3Fid%3D1");
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

namespace {

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
    const char* script; ///< null: missing
    const char* answer; ///< the script's; null: the ad's address
    int adStatus;       ///< 0: the connection is lost
    const char* ad;
    const char* event;
    bool refreshes;
    std::vector<std::string> log;
};

class FailureTest : public BannerTest, public testing::WithParamInterface<Failure> {};

TEST_P(FailureTest, IsReportedOnceAndRefreshedOnlyAfterTheAdWasAskedFor) {
    const Failure& row = GetParam();
    network().at(kScriptURL).status(row.script ? 200 : 404).body(row.script ? row.script : "");
    auto& ad = network().at(kAdURL);
    if (row.adStatus == 0)
        ad.fails(host::TransferErrorKind::ConnectionLost, "lost");
    else
        ad.status(row.adStatus).body(row.ad).header("X-Afma-Refresh-Rate", "30");
    load();
    if (row.answer)
        go(row.answer);
    else if (webEngine().page())
        answerScript();
    advance(1);
    EXPECT_EQ(takeEvents(), row.event);
    EXPECT_EQ(logLines(), row.log);
    EXPECT_TRUE(banner().webView()->isHidden());
    advance(31);
    EXPECT_EQ(GADStatistics::sharedStatistics().adRequestCount(), row.refreshes ? 2 : 1);
}

const Failure kFailures[] = {
    {"ScriptMissing", nullptr, nullptr, 200, "", "failed 2", false, {}},
    {"ScriptEmpty", "", nullptr, 200, "", "failed 2", false, {}},
    {"Errors", "script", "gmsg://ads/loadAdURL?errors=bad", 200, "", "failed 0", false, {}},
    {"InvalidRequest",
     "script",
     "gmsg://ads/invalidRequest?why=unit",
     200,
     "",
     "failed 0",
     false,
     {"<GAD> Invalid Request: {\n    why = unit;\n}"}},
    {"UnableToServe",
     "script",
     "gmsg://ads/unableToServe",
     200,
     "",
     "failed 0",
     false,
     {"<GAD> Unable to serve: {\n}"}},
    {"NoAd", "script", nullptr, 200, " \n\t\r\n", "failed 1", true, {}},
    {"BadRequest",
     "script",
     nullptr,
     400,
     "<p>Ad</p>",
     "failed 0",
     true,
     {"<GAD> Server rejected ad parameters.  Typically this is because the ad unit ID is "
      "incorrect."}},
    {"ServerError", "script", nullptr, 503, "<p>Ad</p>", "failed 3", true, {}},
    {"ConnectionLost", "script", nullptr, 0, "", "failed 2", false, {}},
};

INSTANTIATE_TEST_SUITE_P(Ads, FailureTest, testing::ValuesIn(kFailures),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(BannerTest, WithoutARootViewControllerNothingIsFetched) {
    banner().setRootViewController({});
    load();
    EXPECT_EQ(takeEvents(), "failed 0");
    EXPECT_THAT(logLines(),
                Contains("<GAD> Must set the rootViewController property of GADBannerView "
                         "before calling loadRequest:"));
    EXPECT_TRUE(network().requests().empty());
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
    const auto requestsAfter = [&](double seconds) {
        advance(seconds);
        return GADStatistics::sharedStatistics().adRequestCount();
    };
    auto& center = NSNotificationCenter::defaultCenter();
    show();
    EXPECT_EQ(requestsAfter(28), 1);
    EXPECT_EQ(requestsAfter(2), 2) << "one timer, thirty seconds after the ad came";
    answerScript();
    page().finishLoad();
    application().setState(UIApplicationState::Background);
    EXPECT_EQ(requestsAfter(100), 2);
    application().setState(UIApplicationState::Active);
    center.postNotification("GADViewControllerWillPresentFullScreen", this);
    EXPECT_EQ(requestsAfter(100), 2);
    center.postNotification("GADViewControllerDidRelinquishFullScreen", this);
    EXPECT_EQ(requestsAfter(29), 2);
    EXPECT_EQ(requestsAfter(1.5), 3);
}

TEST_F(BannerTest, TheDelegateMayDestroyTheBannerInACallback) {
    for (const char* body : {"<p>Ad</p>", " "}) {
        auto view = makeBanner();
        network().at(kAdURL).body(body);
        delegate().onEvent = [&view](const std::string&) {
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
