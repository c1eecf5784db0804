#include "tests/ads/BannerTest.h"

#include "ads/Statistics/GADStatistics.h"
#include "platform/foundation/NSNotificationCenter.h"

namespace vistrel {
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
    const char* answer; ///< of the script
    int adStatus;       ///< 0: the connection is lost
    const char* ad;
    const char* event;
    bool refreshes;
    const char* log;
};

class FailureTest : public BannerTest, public testing::WithParamInterface<Failure> {};

// What each event does in each state is in StateTableTest.
TEST_P(FailureTest, IsLoggedOnceAndRefreshedOnlyAfterTheAdWasAskedFor) {
    const Failure& row = GetParam();
    auto& ad = network().at(kAdURL).body(row.ad).header("X-Afma-Refresh-Rate", "30");
    if (row.adStatus == 0)
        ad.fails(host::TransferErrorKind::ConnectionLost, "lost");
    ad.status(row.adStatus);
    load();
    go(std::string("gmsg://ads/") + row.answer);
    advance(1);
    EXPECT_EQ(takeEvents(), row.event);
    EXPECT_EQ(logLines().empty() ? "" : logLines().back(), row.log);
    EXPECT_LE(logLines().size(), 1U);
    EXPECT_TRUE(banner().webView()->isHidden());
    advance(31);
    EXPECT_EQ(GADStatistics::sharedStatistics().adRequestCount(), row.refreshes ? 2 : 1);
}

constexpr const char* kAddress = "loadAdURL?url=http://ads.example/ad%3Fid%3D1";

const Failure kFailures[] = {
    {"Errors", "loadAdURL?errors=bad", 200, "", "failed 0", false, ""},
    {"InvalidRequest", "invalidRequest?why=unit", 200, "", "failed 0", false,
     "<GAD> Invalid Request: {\n    why = unit;\n}"},
    {"UnableToServe", "unableToServe", 200, "", "failed 0", false, "<GAD> Unable to serve: {\n}"},
    {"NoAd", kAddress, 200, " \n\t\r\n", "failed 1", true, ""},
    {"BadRequest", kAddress, 400, "<p>Ad</p>", "failed 0", true,
     "<GAD> Server rejected ad parameters.  Typically this is because the ad unit ID is "
     "incorrect."},
    {"ServerError", kAddress, 503, "<p>Ad</p>", "failed 3", true, ""},
    {"ConnectionLost", kAddress, 0, "", "failed 2", false, ""},
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
