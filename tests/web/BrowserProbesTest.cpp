// What the browser asks the network about, and which answers open a download screen.
#include "tests/web/WebBrowserTest.h"

#include <gmock/gmock.h>

namespace vistrel {
namespace {

using BrowserProbesTest = WebBrowserTest;

TEST_F(BrowserProbesTest, AnOrdinaryStartPageOpensTheGateAndIsLoadedFromItsFinalAddress) {
    network().at(kStart).redirectsTo("http://site.example/music/index.html").after(0.5);
    network().at("http://site.example/music/index.html").type("text/html").body("<p>page");
    const auto browser = open(kStart);

    EXPECT_TRUE(browser->download());
    EXPECT_FALSE(page().isLoading()) << "while gated the engine may load nothing itself";
    advance(1);

    EXPECT_FALSE(browser->download());
    EXPECT_TRUE(page().isLoading());
    EXPECT_EQ(countOfCalls("load http://site.example/music/index.html"), 1);
    EXPECT_EQ(countOfRequests("http://site.example/music/index.html"), 2)
        << "one probe opens the gate, one goes beside the engine's own load";
}

TEST_F(BrowserProbesTest, OnlyTheThreeMediaTypesSpelledExactlyTurnALinkIntoADownload) {
    struct Case {
        const char* type;
        bool downloads;
    };
    const Case cases[] = {
        {"video/mp4", true},   {"video/m4v", true},  {"audio/mpeg", true},
        {"video/MP4", false},  {"audio/mp3", false}, {"video/quicktime", false},
        {"video/mp4x", false}, {"", false},          {"text/html", false},
        {"Video/mp4", false},
    };
    for (const Case& each : cases) {
        const auto browser = openPage();
        const std::string link = std::string("http://site.example/f?") + each.type;
        network().at(link).type(each.type).body("media");
        EXPECT_TRUE(page().clickLink(link)) << "the open gate lets the engine load, too";
        advance(1);
        EXPECT_EQ(downloadOnTop() != nullptr, each.downloads) << each.type;
        navigation().popToRootViewControllerAnimated(false);
        settle();
    }
}

TEST_F(BrowserProbesTest, TheDownloadScreenGetsTheFinalAddressAndTheProbeIsCancelled) {
    openPage();
    network().at("http://site.example/go").redirectsTo("http://cdn.example/film.mp4");
    network()
        .at("http://cdn.example/film.mp4")
        .type("video/mp4")
        .body(std::string(1000, 'x'))
        .secondsBetweenChunks(5);
    page().clickLink("http://site.example/go");
    advance(1);

    ASSERT_TRUE(downloadOnTop());
    EXPECT_EQ(downloadOnTop()->downloadRequest().URL()->absoluteString(),
              "http://cdn.example/film.mp4");
    EXPECT_EQ(network().runningTransfers(), 0);
    EXPECT_GE(countOfCalls("stopLoading"), 1) << "the engine's own load of the file ends";
}

TEST_F(BrowserProbesTest, AnAnswerThatArrivesWhileThePageSlidesOutOpensNothing) {
    openPage();
    const char* link = "http://site.example/film.mp4";
    network().at(link).type("video/mp4").body("media").after(0.2);
    page().clickLink(link);
    turn();
    navigation().popViewControllerAnimated(true);
    advance(1);
    EXPECT_EQ(navigation().viewControllers().size(), 1U);
}

TEST_F(BrowserProbesTest, HomeProbesAMediaStartAddressAgainAfterItsDownloadScreen) {
    network().at(kStart).type("audio/mpeg").body("mp3");
    const auto browser = open(kStart);
    for (int visit = 1; visit <= 3; ++visit) {
        advance(1);
        ASSERT_TRUE(downloadOnTop()) << visit;
        EXPECT_TRUE(browser->download());
        EXPECT_EQ(countOfRequests(kStart), visit);
        navigation().popViewControllerAnimated(false);
        settle();
        EXPECT_EQ(navigation().topViewController(), browser);
        EXPECT_FALSE(page().isLoading());
        browser->homeAction();
    }
}

TEST_F(BrowserProbesTest, ProbeAndEngineOpenOneScreenWhicheverAnswersFirst) {
    constexpr const char* kLink = "http://site.example/film";
    constexpr const char* kFilm = "http://cdn.example/film.mp4?once=1";
    struct Case {
        const char* name;
        double probeSeconds;
        const char* engineFilm; ///< where the engine's own redirect leads
    };
    const Case cases[] = {
        {"the probe is faster", 0, kFilm},
        {"the engine is faster", 0.3, kFilm},
        {"the probe is faster, and was sent elsewhere", 0, "http://cdn.example/film.mp4?once=2"},
        {"the engine is faster, and was sent elsewhere", 0.3, "http://cdn.example/film.mp4?once=2"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        openPage();
        network().at(kLink).redirectsTo(kFilm).after(each.probeSeconds);
        for (const char* film : {kFilm, "http://cdn.example/film.mp4?once=2"})
            network().at(film).type("video/mp4").body("x").after(each.probeSeconds);
        page().clickLink(kLink);
        advance(0.1);
        // A screen that covers the browser ends the engine's load; one that comes late does not.
        navigate(each.engineFilm, true);
        EXPECT_EQ(respond(each.engineFilm, "video/mp4"), !browserIsWatching());
        advance(2);
        EXPECT_EQ(screens(), 3U);
        EXPECT_EQ(network().runningTransfers(), 0);
        navigation().popToRootViewControllerAnimated(false);
        settle();
    }
}

TEST_F(BrowserProbesTest, MovingWithinADocumentProbesNothing) {
    openPage();
    network().forgetRequests();
    for (int i = 0; i < 500; ++i) {
        host::WebNavigation step;
        step.url = std::string(kStart) + "#" + std::to_string(i);
        step.isSameDocument = true;
        EXPECT_TRUE(page().navigateFrame(step));
    }
    advance(1);
    EXPECT_TRUE(network().requests().empty());
}

TEST_F(BrowserProbesTest, OfManyProbesTheOldestGiveWayAndNoneKeepsALeftScreen) {
    const std::weak_ptr<WebBrowserViewController> browser = openPage();
    for (int i = 0; i < 300; ++i) {
        const std::string frame = "http://site.example/slow?" + std::to_string(i);
        network().at(frame).neverAnswers();
        navigate(frame);
    }
    advance(1);
    EXPECT_EQ(network().runningTransfers(), 6);
    navigation().popViewControllerAnimated(true);
    settle();
    advance(1);
    EXPECT_TRUE(browser.expired());
    EXPECT_EQ(network().runningTransfers(), 0);
    EXPECT_EQ(webEngine().page(), nullptr) << "the page goes with its screen";
}

TEST_F(BrowserProbesTest, ACoveredScreenKeepsItsProbes) {
    openPage();
    network().at("http://site.example/late.mp4").type("video/mp4").body("x").after(3);
    network().at("http://site.example/soon.mp4").type("video/mp4").body("x");
    navigate("http://site.example/late.mp4");
    navigate("http://site.example/soon.mp4");
    advance(1);
    EXPECT_EQ(screens(), 3U);
    advance(4);
    EXPECT_EQ(screens(), 4U);
}

TEST_F(BrowserProbesTest, AnUnreachableStartLeavesTheGateShutUntilHomeGetsAnAnswer) {
    const auto browser = open(kStart);
    advance(90);
    EXPECT_TRUE(browser->download());
    EXPECT_EQ(alertCount(), 0);

    network().at(kStart).type("text/html").body("<p>");
    browser->homeAction();
    advance(1);
    EXPECT_FALSE(browser->download());
    EXPECT_TRUE(page().isLoading());
}

TEST_F(BrowserProbesTest, AnAddressThatDoesNotParseProbesNothing) {
    const auto browser = open("http://not an address");
    advance(1);
    EXPECT_FALSE(browser->URL());
    EXPECT_TRUE(network().requests().empty());
    browser->homeAction();
    advance(1);
    EXPECT_TRUE(network().requests().empty());
}

TEST_F(BrowserProbesTest, ProbesSendThePagesCookiesAndKeepNone) {
    openPage();
    for (const auto& request : network().requests())
        EXPECT_EQ(request.cookies, host::CookieUse::SendOnly) << request.url;
}

TEST_F(BrowserProbesTest, OnlyHttpIsProbed) {
    openPage();
    network().forgetRequests();
    for (const char* address : {"file:///etc/passwd", "about:blank", "data:text/html,x",
                                "mailto:a@b.example", "ftp://site.example/a.mp4"})
        page().clickLink(address);
    advance(1);
    EXPECT_TRUE(network().requests().empty());
}

TEST_F(BrowserProbesTest, AFormThatPostsIsSentOnceAndItsAnswerJudgedByTheEngine) {
    openPage();
    network().forgetRequests();
    EXPECT_TRUE(page().submitForm("http://site.example/fetch"));
    advance(1);
    EXPECT_TRUE(network().requests().empty()) << "a probe would send the form a second time";

    EXPECT_TRUE(respond("http://site.example/fetch", "text/html", "POST"));
    EXPECT_FALSE(respond("http://site.example/fetch", "video/mp4", "POST"));
    advance(1);
    ASSERT_TRUE(downloadOnTop());
    EXPECT_EQ(downloadOnTop()->downloadRequest().URL()->absoluteString(),
              "http://site.example/fetch");
}

TEST_F(BrowserProbesTest, TwoMediaFramesPushTwoDownloadScreensAndManyNoMore) {
    for (const int frames : {1, 2, 300}) {
        openPage();
        for (int i = 0; i < frames; ++i) {
            const std::string frame = "http://site.example/" + std::to_string(i) + ".mp4";
            network().at(frame).type("video/mp4").body("x");
            navigate(frame);
        }
        advance(3);
        EXPECT_EQ(screens(), 2U + static_cast<std::size_t>(std::min(frames, 2))) << frames;
        navigation().popToRootViewControllerAnimated(false);
        settle();
    }
}

TEST_F(BrowserProbesTest, AScreenThatComesBackWatchesItsPageOnlyWithCarefulManners) {
    for (const bool careful : {false, true}) {
        deterministicHost().settings["manners/careful"] = careful ? "yes" : "no";
        const auto browser = openPage();
        network().at("http://site.example/a.mp4").type("video/mp4").body("x");
        page().clickLink("http://site.example/a.mp4");
        advance(2);
        navigation().popViewControllerAnimated(false);
        settle();
        network().forgetRequests();

        browser->homeAction();
        advance(1);
        EXPECT_EQ(network().requests().size(), careful ? 1U : 0U);
        EXPECT_EQ(countOfCalls(std::string("load ") + kStart), 3) << "its buttons work always";
        page().clickLink("http://site.example/a.mp4");
        advance(2);
        EXPECT_EQ(downloadOnTop() != nullptr, careful);
        navigation().popToRootViewControllerAnimated(false);
        settle();
    }
}

}
}
