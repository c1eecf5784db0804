#include "tests/ads/BannerTest.h"

#include "ads/GADServer.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/json/GAD_ZelJSON.h"
#include "platform/foundation/NSNotificationCenter.h"

namespace vistrel {
namespace {

TEST_F(BannerTest, AnAdIsBuiltFetchedShownAndCountedOnce) {
    adWith("X-Afma-Tracking-Urls", "http://track.example/a  http://track.example/b");
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
    EXPECT_EQ(adRequests(), row.refreshes ? 2 : 1);
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
    load();
    go("gmsg://ads/invalidRequest");
    EXPECT_TRUE(delegate().lastFailure.contains("slotname"));
    network().forgetRequests();
    banner().setRootViewController({});
    load();
    EXPECT_EQ(takeEvents(), "failed 0, failed 0");
    EXPECT_FALSE(delegate().lastFailure.contains("slotname")) << "of another request";
    EXPECT_THAT(logLines(),
                Contains("<GAD> Must set the rootViewController property of GADBannerView "
                         "before calling loadRequest:"));
    EXPECT_TRUE(network().requests().empty());
}

TEST_F(BannerTest, AnAdServerIsAHostThatMayHaveAPort) {
    const std::pair<const char*, const char*> cases[] = {
        {"http://h", "h"},
        {"http://h:81/", "h:81"},
        {"http://[::1]:81", "[::1]:81"},
        {"https://h", ""},
        {"http://h/path", ""},
        {"http://h?query", ""},
        {"http://u@h", ""},
        {"http:", ""},
    };
    for (const auto& [address, host] : cases) {
        const auto url = NSURL::URLWithString(address);
        EXPECT_EQ(url && isGADServer(*url), *host != 0) << address;
        if (*host != 0) {
            useGADServer(*url);
            EXPECT_EQ(gadSettingValue(kGADStaticContentHost), host);
            EXPECT_EQ(gadSettingValue(kGADAdServerOrigin), std::string("http://") + host);
        }
    }
    overrideGADSetting(kGADReachabilityHost, "");
    overrideGADSetting(kGADClickServerDomain, "");
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
    adWith("X-Afma-Refresh-Rate", "30");
    const auto requestsAfter = [&](double seconds) {
        advance(seconds);
        return adRequests();
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

TEST_F(BannerTest, NothingThatHangsEndsRefreshing) {
    adWith("X-Afma-Refresh-Rate", "30");
    load();
    answerScript(); // the page does not load
    advance(30);
    EXPECT_EQ(takeEvents(), "failed 2");
    EXPECT_EQ(adRequests(), 2);
    answerScript();
    page().finishLoad();
    advance(28.5);
    load(); // and is busy when the interval ends
    go("gmsg://ads/unableToServe");
    EXPECT_EQ(takeEvents(), "received, failed 0");
    advance(30);
    EXPECT_EQ(adRequests(), 4);
}

TEST_F(BannerTest, TheAdBeforeDoesNotDisturbTheNext) {
    show();
    touchAd();
    support::ScriptedWebPage& ad = page();
    load();
    EXPECT_FALSE(ad.clickLink("http://shop.example/")) << "loads in the banner";
    answerScript();
    ad.failLoad({-999, "cancelled", ""});
    EXPECT_EQ(takeEvents(), "received");
    ad.finishLoad();
    EXPECT_EQ(takeEvents(), "received");
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

class EnduranceTest : public BannerTest {
protected:
    EnduranceTest() {
        adWith("X-Afma-Tracking-Urls", "http://track.example/a http://silent.example/")
            .header("X-Afma-Click-Tracking-Urls", "http://click.example/a");
        network().at("http://track.example/a").body("ok");
        network().at("http://click.example/a").body("ok");
        network().at("http://silent.example/").neverAnswers();
    }

    void openAndClose(const std::string& url) {
        ASSERT_EQ(webEngine().pages().size(), 1U) << "a page other than the ad's is alive";
        touchAd();
        go(url, host::WebNavigationType::LinkClicked);
        advance(1);
        auto screen =
            std::dynamic_pointer_cast<GADViewController>(navigation().modalViewController());
        ASSERT_TRUE(screen) << url;
        page().finishLoad();
        screen->relinquishScreen();
        screen.reset(); // its page is emptied two seconds later
        advance(5);
    }

    /// What the ad and its screens have left behind, in counts that a leak increases.
    std::string footprint() {
        GADStatistics& statistics = GADStatistics::sharedStatistics();
        statistics.synchronize();
        const std::string stored = *GAD_ZelJSON().stringWithObject(preferences().stored()).text;
        std::ostringstream text;
        text << webEngine().pages().size() << " pages, " << network().runningTransfers()
             << " transfers, " << std::ranges::count(stored, ',') << " stored, reported:";
        for (const auto& [key, value] : statistics.parameters())
            text << ' ' << key << (key == "pcc" ? "=" + std::to_string(value.integerValue()) : "");
        return text.str();
    }
};

TEST_F(EnduranceTest, AdsAndTheirScreensLeaveNothingBehind) {
    // Each round is one ad and two screens.
    const char* asked = std::getenv("VISTREL_ENDURANCE_ROUNDS");
    const int rounds = asked ? std::atoi(asked) : 50;
    std::string first;
    std::size_t pendingWork = 0;
    for (int round = 0; round < rounds; ++round) {
        SCOPED_TRACE(round);
        show();
        advance(0.2);
        for (const char* url :
             {"http://shop.example/a", "gmsg://ads/open?a=browser&u=http://shop.example/b"})
            ASSERT_NO_FATAL_FAILURE(openAndClose(url));
        advance(60); // until a server that does not answer times out
        const std::string now = footprint();
        if (first.empty()) {
            first = now;
            pendingWork = loop().pendingWork();
        }
        ASSERT_EQ(now, first);
        if (loop().pendingWork() != pendingWork)
            advance(1); // the status bar's clock may have been due just then
        ASSERT_EQ(loop().pendingWork(), pendingWork);
    }
    EXPECT_THAT(first, HasSubstr(" 0 transfers"));
    EXPECT_EQ(adRequests(), rounds);
    EXPECT_EQ(requestsFor("http://click.example/a"), 2 * rounds);
}

}
}
