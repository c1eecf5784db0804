// What the browser asks the network about, and which answers open a download screen.
#include "tests/web/WebBrowserTest.h"

namespace vistrel {
namespace {

using BrowserProbesTest = WebBrowserTest;

TEST_F(BrowserProbesTest, AnOrdinaryStartPageOpensTheGateAndIsLoadedFromItsFinalAddress) {
    const std::string index = "http://site.example/music/index.html";
    network().at(kStart).redirectsTo(index).after(0.5);
    network().at(index).type("text/html").body("<p>page");
    const auto browser = open(kStart);

    EXPECT_TRUE(browser->download());
    EXPECT_FALSE(page().isLoading()) << "while gated the engine may load nothing itself";
    advance(1);

    EXPECT_FALSE(browser->download());
    EXPECT_TRUE(page().isLoading());
    EXPECT_EQ(countOfCalls("load " + index), 1);
    EXPECT_EQ(countOfRequests(index), 2)
        << "one probe opens the gate, one goes beside the engine's own load";
}

TEST_F(BrowserProbesTest, OnlyTheThreeMediaTypesSpelledExactlyTurnALinkIntoADownload) {
    const std::pair<const char*, bool> cases[] = {
        {"video/mp4", true},   {"video/m4v", true},  {"audio/mpeg", true},
        {"video/MP4", false},  {"audio/mp3", false}, {"video/quicktime", false},
        {"video/mp4x", false}, {"", false},          {"text/html", false},
        {"Video/mp4", false},
    };
    for (const auto& [type, downloads] : cases) {
        openPage();
        site("/file").type(type);
        EXPECT_TRUE(follow("/file")) << "the open gate lets the engine load, too";
        EXPECT_EQ(downloadOnTop(), downloads ? "http://site.example/file" : "") << type;
        backToRoot();
    }
}

TEST_F(BrowserProbesTest, TheDownloadScreenGetsTheFinalAddressAndTheProbeIsCancelled) {
    openPage();
    site("/go").redirectsTo("http://site.example/film.mp4");
    site("/film.mp4").body(std::string(1000, 'x')).secondsBetweenChunks(5);
    follow("/go");
    EXPECT_EQ(downloadOnTop(), "http://site.example/film.mp4");
    EXPECT_EQ(network().runningTransfers(), 0);
    EXPECT_GE(countOfCalls("stopLoading"), 1) << "the engine's own load of the file ends";
}

TEST_F(BrowserProbesTest, AnAnswerThatArrivesWhileThePageSlidesOutOpensNothing) {
    openPage();
    site("/film.mp4").after(0.2);
    follow("/film.mp4", 0);
    navigation().popViewControllerAnimated(true);
    advance(1);
    EXPECT_EQ(screens(), 1U);
}

TEST_F(BrowserProbesTest, HomeProbesAMediaStartAddressAgainAfterItsDownloadScreen) {
    network().at(kStart).type("audio/mpeg").body("mp3");
    const auto browser = open(kStart);
    for (int visit = 1; visit <= 3; ++visit) {
        advance(1);
        ASSERT_EQ(downloadOnTop(), kStart) << visit;
        EXPECT_TRUE(browser->download());
        EXPECT_EQ(countOfRequests(kStart), visit);
        back();
        EXPECT_FALSE(page().isLoading());
        browser->homeAction();
    }
}

TEST_F(BrowserProbesTest, ProbeAndEngineOpenOneScreenWhicheverAnswersFirst) {
    const std::string film = "http://site.example/film.mp4?once=1";
    const std::string other = "http://site.example/film.mp4?once=2";
    for (const double probeSeconds : {0.0, 0.3}) {
        for (const std::string& engineFilm : {film, other}) {
            SCOPED_TRACE(engineFilm + " after " + std::to_string(probeSeconds));
            openPage();
            site("/film").redirectsTo(film).after(probeSeconds);
            site("/film.mp4?once=1").after(probeSeconds);
            site("/film.mp4?once=2").after(probeSeconds);
            follow("/film", 0.1);
            // A screen that covers the browser ends the engine's load; one that comes late does
            // not.
            const bool isCovered = !downloadOnTop().empty();
            page().navigateFrame({.url = engineFilm, .headers = {}, .isRedirect = true});
            EXPECT_EQ(respond(engineFilm, "video/mp4"), isCovered);
            advance(2);
            EXPECT_EQ(screens(), 3U);
            EXPECT_EQ(network().runningTransfers(), 0);
            backToRoot();
        }
    }
}

TEST_F(BrowserProbesTest, MovingWithinADocumentProbesNothing) {
    openPage();
    network().forgetRequests();
    for (int i = 0; i < 500; ++i)
        EXPECT_TRUE(page().navigateFrame({.url = std::string(kStart) + "#" + std::to_string(i),
                                          .headers = {},
                                          .isSameDocument = true}));
    advance(1);
    EXPECT_TRUE(network().requests().empty());
}

TEST_F(BrowserProbesTest, OfManyProbesTheOldestGiveWayAndNoneKeepsALeftScreen) {
    const std::weak_ptr<WebBrowserViewController> browser = openPage();
    for (int i = 0; i < 300; ++i) {
        const std::string frame = "/slow?" + std::to_string(i);
        site(frame).neverAnswers();
        navigate("http://site.example" + frame);
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
    site("/late.mp4").after(3);
    site("/soon.mp4");
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
    EXPECT_FALSE(browser->URL());
    browser->homeAction();
    advance(1);
    EXPECT_TRUE(network().requests().empty());
}

TEST_F(BrowserProbesTest, OnlyHttpIsProbedWithThePagesCookiesAndKeepsNone) {
    openPage();
    for (const auto& request : network().requests())
        EXPECT_EQ(request.cookies, host::CookieUse::SendOnly) << request.url;
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
    EXPECT_EQ(downloadOnTop(), "http://site.example/fetch");
}

TEST_F(BrowserProbesTest, TwoMediaFramesPushTwoDownloadScreensAndManyNoMore) {
    for (const int frames : {1, 2, 300}) {
        openPage();
        for (int i = 0; i < frames; ++i) {
            const std::string frame = "/" + std::to_string(i) + ".mp4";
            site(frame);
            navigate("http://site.example" + frame);
        }
        advance(3);
        EXPECT_EQ(screens(), 2U + static_cast<std::size_t>(std::min(frames, 2))) << frames;
        backToRoot();
    }
}

TEST_F(BrowserProbesTest, AScreenThatComesBackWatchesItsPageOnlyWithCarefulManners) {
    for (const bool careful : {false, true}) {
        setManners(careful);
        const auto browser = openPage();
        site("/a.mp4");
        follow("/a.mp4");
        back();
        network().forgetRequests();

        browser->homeAction();
        advance(1);
        EXPECT_EQ(network().requests().size(), careful ? 1U : 0U);
        EXPECT_EQ(countOfCalls(std::string("load ") + kStart), 3) << "its buttons work always";
        follow("/a.mp4", 2);
        EXPECT_EQ(downloadOnTop(), careful ? "http://site.example/a.mp4" : "");
        backToRoot();
    }
}

}
}
