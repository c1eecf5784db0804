#include "web/WebBrowserViewController.h"

#include "platform/foundation/NSURLCredentialStorage.h"
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIBarButtonItem.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIKey.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UITextField.h"
#include "platform/uikit/UIToolbar.h"
#include "platform/uikit/UIWebView.h"
#include "tests/support/ui/ScreenTest.h"
#include "web/FileDownloadViewController.h"
#include "web/UIToolbarAdditions.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace vistrel {
namespace {

constexpr const char* kStart = "http://site.example/music/";

class WebBrowserTest : public support::ScreenTest {
protected:
    std::shared_ptr<WebBrowserViewController> open(const std::string& address) {
        auto browser = WebBrowserViewController::withTitleURL("Music", address);
        push(browser);
        return browser;
    }
    /// On an ordinary page that has been loaded.
    std::shared_ptr<WebBrowserViewController> openPage() {
        network().at(kStart).type("text/html").body("<p>page");
        auto browser = open(kStart);
        advance(1);
        page().finishLoad();
        advance(1);
        return browser;
    }
    support::ScriptedWebPage& page() { return *webEngine().page(); }
    std::shared_ptr<FileDownloadViewController> downloadOnTop() {
        return std::dynamic_pointer_cast<FileDownloadViewController>(
            navigation().topViewController());
    }
    /// A navigation of the page, as after a script or a redirect.
    bool navigate(const std::string& url, bool isRedirect = false) {
        host::WebNavigation navigation;
        navigation.url = url;
        navigation.isRedirect = isRedirect;
        return page().navigateFrame(navigation);
    }
    /// The head of the engine's own answer; whether the engine may show it.
    bool respond(const std::string& url, const std::string& type,
                 const std::string& method = "GET") {
        return page().respond({url, type, 200, {}, true, method});
    }
    bool browserIsWatching() {
        return std::dynamic_pointer_cast<WebBrowserViewController>(
                   navigation().topViewController()) != nullptr;
    }
    void sendKey(const std::string& text) { send({UIKeyCode::Character, text}); }
    void sendKey(UIKeyCode code) { send({code, {}}); }
    static void send(const UIKey& key) { UIApplication::sharedApplication().events().sendKey(key); }
    std::size_t screens() { return navigation().viewControllers().size(); }
    int countOfRequests(const std::string& url) {
        const auto urls = network().requestedURLs();
        return static_cast<int>(std::count(urls.begin(), urls.end(), url));
    }
    int countOfCalls(const std::string& call) {
        const auto& calls = page().calls();
        return static_cast<int>(std::count(calls.begin(), calls.end(), call));
    }
};

TEST_F(WebBrowserTest, AnOrdinaryStartPageOpensTheGateAndIsLoadedFromItsFinalAddress) {
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

TEST_F(WebBrowserTest, OnlyTheThreeMediaTypesSpelledExactlyTurnALinkIntoADownload) {
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

TEST_F(WebBrowserTest, TheDownloadScreenGetsTheFinalAddressAndTheProbeIsCancelled) {
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

TEST_F(WebBrowserTest, AnAnswerThatArrivesWhileThePageSlidesOutOpensNothing) {
    openPage();
    const char* link = "http://site.example/film.mp4";
    network().at(link).type("video/mp4").body("media").after(0.2);
    page().clickLink(link);
    turn();
    navigation().popViewControllerAnimated(true);
    advance(1);
    EXPECT_EQ(navigation().viewControllers().size(), 1U);
}

TEST_F(WebBrowserTest, HomeProbesAMediaStartAddressAgainAfterItsDownloadScreen) {
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

TEST_F(WebBrowserTest, ProbeAndEngineOpenOneScreenWhicheverAnswersFirst) {
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

TEST_F(WebBrowserTest, MovingWithinADocumentProbesNothing) {
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

TEST_F(WebBrowserTest, OfManyProbesTheOldestGiveWayAndNoneKeepsALeftScreen) {
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

TEST_F(WebBrowserTest, ACoveredScreenKeepsItsProbes) {
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

TEST_F(WebBrowserTest, AFormIsSentAgainOnlyWhenTheUserAgrees) {
    const auto browser = openPage();
    page().submitForm("http://site.example/form");
    page().finishLoad();
    const auto resend = [&] {
        return page().navigate(
            {"http://site.example/form", "POST", {}, host::WebNavigationType::FormResubmitted});
    };
    browser->refreshAction();
    EXPECT_FALSE(resend());
    EXPECT_EQ(alertTitle(), "Send Again?");
    ASSERT_TRUE(tapAlertButton("Cancel"));
    settle();
    EXPECT_EQ(countOfCalls("reload"), 1);
    EXPECT_FALSE(resend());
    ASSERT_TRUE(tapAlertButton("Send"));
    EXPECT_EQ(countOfCalls("reload"), 2);
    EXPECT_TRUE(resend());
    EXPECT_FALSE(resend()) << "agreed to once";
    settle();
}

TEST_F(WebBrowserTest, OneLoginServesThePageAndWhatComesAfterItAtThatOriginOnly) {
    auto& storage = NSURLCredentialStorage::sharedCredentialStorage();
    openPage();
    const host::WebChallenge challenge{"http://site.example", "Members", true};
    page().challenge(challenge);
    page().challenge(challenge);
    page().challenge({"http://other.example", "Members", true});
    ASSERT_EQ(alertCount(), 2);
    ASSERT_TRUE(tapAlertButton("Cancel"));
    settle();
    EXPECT_EQ(alertTitle(), "Log In");
    const auto alert = UIAlertView::visibleAlerts().back();
    for (const char letter : std::string("Ann"))
        sendKey(std::string(1, letter));
    sendKey(UIKeyCode::Enter);
    for (const char* letter : {"\u00fc", "x", "y"})
        sendKey(letter);
    sendKey(UIKeyCode::Backspace);
    EXPECT_EQ(alert->textFieldAtIndex(1)->accessibilityElement().value, "\u2022\u2022");
    sendKey(UIKeyCode::Enter);
    settle();
    EXPECT_EQ(alertCount(), 0);
    EXPECT_THAT(page().credentials(), ::testing::ElementsAre("none", "Ann:\u00fcx", "Ann:\u00fcx"));

    network().forgetRequests();
    network().at("http://site.example/a.mp4").type("video/mp4").body("x");
    network().at("http://other.example/b").type("text/html").body("x");
    navigate("http://other.example/b");
    navigate("http://site.example/a.mp4");
    advance(1);
    ASSERT_TRUE(downloadOnTop());
    downloadOnTop()->download();
    advance(1);
    for (const auto& request : network().requests())
        EXPECT_EQ(support::ScriptedNetwork::header(request, "Authorization").empty(),
                  request.url == "http://other.example/b")
            << request.url;
    EXPECT_EQ(network().requests().size(), 3U);
    page().challenge(challenge);
    EXPECT_EQ(page().credentials().back(), "Ann:\u00fcx") << "known, no second dialog";
    const int alerts = alertCount();
    page().challenge({"http://site.example", "Members", true, true});
    EXPECT_EQ(alertCount(), alerts + 1) << "what was given is wrong";
    storage.removeAll();
}

TEST_F(WebBrowserTest, PagesThatCannotBeShownSaySoInTheirPlace) {
    struct Case {
        host::WebError error;
        const char* says;
        bool offersAgain;
    };
    const Case cases[] = {
        {{host::WebError::kCertificate, "bad", kStart}, "certificate is not valid", false},
        {{host::WebError::kProcessEnded, "gone", kStart}, "The Page Has Stopped", true},
        {{-1004, "no connection", kStart}, "", false},
        {{102, "interrupted", kStart}, "", false},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.error.message);
        openPage();
        page().startLoad();
        page().failLoad(each.error);
        const bool shows = *each.says != '\0';
        EXPECT_EQ(countOfCalls(std::string("showNotice ") + kStart), shows ? 1 : 0);
        EXPECT_NE(page().loadedHTML().find(each.says), std::string::npos);
        EXPECT_EQ(page().loadedHTML().find(std::string("href=\"") + kStart) != std::string::npos,
                  each.offersAgain);
        EXPECT_EQ(alertCount(), 0);
        navigation().popToRootViewControllerAnimated(false);
        settle();
    }
}

TEST_F(WebBrowserTest, AnUnreachableStartLeavesTheGateShutUntilHomeGetsAnAnswer) {
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

TEST_F(WebBrowserTest, AnAddressThatDoesNotParseProbesNothing) {
    const auto browser = open("http://not an address");
    advance(1);
    EXPECT_FALSE(browser->URL());
    EXPECT_TRUE(network().requests().empty());
    browser->homeAction();
    advance(1);
    EXPECT_TRUE(network().requests().empty());
}

TEST_F(WebBrowserTest, ProbesSendThePagesCookiesAndKeepNone) {
    openPage();
    for (const auto& request : network().requests())
        EXPECT_EQ(request.cookies, host::CookieUse::SendOnly) << request.url;
}

TEST_F(WebBrowserTest, OnlyHttpIsProbed) {
    openPage();
    network().forgetRequests();
    for (const char* address : {"file:///etc/passwd", "about:blank", "data:text/html,x",
                                "mailto:a@b.example", "ftp://site.example/a.mp4"})
        page().clickLink(address);
    advance(1);
    EXPECT_TRUE(network().requests().empty());
}

TEST_F(WebBrowserTest, AFormThatPostsIsSentOnceAndItsAnswerJudgedByTheEngine) {
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

TEST_F(WebBrowserTest, TwoMediaFramesPushTwoDownloadScreensAndManyNoMore) {
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

TEST_F(WebBrowserTest, AScreenThatComesBackWatchesItsPageOnlyWithCarefulManners) {
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

TEST_F(WebBrowserTest, RefreshAndStopChangePlacesAndTheSpinnerComesAndGoes) {
    network().at(kStart).type("text/html").body("<p>").after(0.5);
    const auto browser = open(kStart);
    const auto refresh = itemWithTag(*browser->toolbar(), 3);
    EXPECT_EQ(refresh->systemItem(), UIBarButtonSystemItem::Refresh);
    advance(1);
    ASSERT_TRUE(page().isLoading());
    EXPECT_EQ(itemWithTag(*browser->toolbar(), 3)->systemItem(), UIBarButtonSystemItem::Stop);
    ASSERT_TRUE(browser->navigationItem().rightBarButtonItem());

    UIApplication::sharedApplication().setNetworkActivityIndicatorVisible(true);
    page().failLoad({1, "The page is gone", kStart});
    EXPECT_EQ(itemWithTag(*browser->toolbar(), 3), refresh);
    EXPECT_FALSE(browser->navigationItem().rightBarButtonItem());
    EXPECT_FALSE(UIApplication::sharedApplication().isNetworkActivityIndicatorVisible());
    EXPECT_EQ(logLines().back(), "The page is gone");
    EXPECT_EQ(alertCount(), 0);
}

TEST_F(WebBrowserTest, AForeignRightItemIsLeftAlone) {
    const auto browser = openPage();
    const auto other = UIBarButtonItem::withTitle("Mine", UIBarButtonItemStyle::Plain, {});
    browser->navigationItem().setRightBarButtonItem(other);
    page().clickLink("http://site.example/next");
    page().finishLoad();
    EXPECT_EQ(browser->navigationItem().rightBarButtonItem(), other);
    advance(1);
}

TEST_F(WebBrowserTest, ShortcutsZoomReloadAndAskForAnAddress) {
    const auto browser = openPage();
    const auto control = [](const char* text) {
        send({UIKeyCode::Character, text, false, true});
    };
    const struct {
        const char* key;
        double zoom;
    } kZooms[] = {{"+", 1.2}, {"=", 1.44}, {"-", 1.2}, {"0", 1}, {"-", 1 / 1.2}};
    for (const auto& step : kZooms) {
        control(step.key);
        EXPECT_NEAR(page().zoom(), step.zoom, 1e-9) << step.key;
    }
    for (int i = 0; i < 20; ++i)
        control("+");
    EXPECT_EQ(page().zoom(), 3);
    send({UIKeyCode::F5, {}});
    EXPECT_EQ(countOfCalls("reload"), 1);
    for (const auto& [typed, opened] :
         {std::pair{"other.example/a", "load http://other.example/a"},
          std::pair{"http://site.example/b", "load http://site.example/b"}}) {
        control("l");
        settle();
        EXPECT_EQ(alertTitle(), "Go to Address");
        sendKey(std::string(typed));
        sendKey(UIKeyCode::Enter);
        settle();
        EXPECT_EQ(page().calls().back(), opened);
    }
    send({UIKeyCode::Left, {}, false, false, true});
    EXPECT_EQ(countOfCalls("goBack"), 1);
}

TEST_F(WebBrowserTest, BackAndForwardFollowTheHistory) {
    const auto browser = openPage();
    const auto enabled = [&](int tag) {
        return itemWithTag(*browser->toolbar(), tag)->isEnabled();
    };
    EXPECT_FALSE(enabled(2));
    EXPECT_FALSE(enabled(1));
    page().clickLink("http://site.example/next");
    page().finishLoad();
    EXPECT_TRUE(enabled(2));
    browser->backAction();
    turn();
    page().finishLoad();
    EXPECT_FALSE(enabled(2));
    EXPECT_TRUE(enabled(1));
}

TEST_F(WebBrowserTest, EveryFinishedPageKeepsItsLinksInTheSameFrame) {
    openPage();
    EXPECT_EQ(countOfCalls("evaluate { var a = document.getElementsByTagName(\"a\"); for (var i=0; "
                           "i<a.length; i++) a[i].target = \"_self\"; }"),
              1);
}

TEST_F(WebBrowserTest, PageAndToolbarShareTheSpaceUnderTheBar) {
    network().at(kStart).type("text/html").body("<p>");
    const auto browser = open(kStart);
    EXPECT_EQ(browser->webView()->frame(), CGRectMake(0, 0, 320, 372));
    EXPECT_EQ(browser->toolbar()->frame(), CGRectMake(0, 372, 320, 44));
    EXPECT_EQ(browser->toolbar()->items().size(), 7U);
}

TEST_F(WebBrowserTest, ReplacingAnItemTakesTheFirstWithTheTagOnly) {
    const auto shared = std::make_shared<UIToolbar>();
    UIToolbar& toolbar = *shared;
    const auto item = [](int tag) {
        auto made = UIBarButtonItem::withTitle("x", UIBarButtonItemStyle::Plain, {});
        made->setTag(tag);
        return made;
    };
    const auto a = item(3);
    const auto b = item(3);
    const auto c = item(7);
    toolbar.setItems({a, b});
    EXPECT_EQ(itemWithTag(toolbar, 3), a);
    EXPECT_EQ(itemWithTag(toolbar, 7), nullptr);
    replaceItemWithTagWithItem(toolbar, 3, c);
    EXPECT_THAT(toolbar.items(), ::testing::ElementsAre(c, b));
    replaceItemWithTagWithItem(toolbar, 9, a);
    EXPECT_THAT(toolbar.items(), ::testing::ElementsAre(c, b));
}

}
}
