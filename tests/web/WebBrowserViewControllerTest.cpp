#include "web/WebBrowserViewController.h"

#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIBarButtonItem.h"
#include "platform/uikit/UINavigationItem.h"
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

TEST_F(WebBrowserTest, AMediaStartAddressPushesAtOnceAndStaysGatedSoThatHomeRepeatsIt) {
    network().at(kStart).type("audio/mpeg").body("mp3");
    const auto browser = open(kStart);
    advance(1);
    ASSERT_TRUE(downloadOnTop());
    EXPECT_TRUE(browser->download());

    navigation().popViewControllerAnimated(false);
    settle();
    EXPECT_EQ(navigation().topViewController(), browser);
    EXPECT_FALSE(page().isLoading());
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

    host::WebResponse answer;
    answer.url = "http://site.example/fetch";
    answer.requestMethod = "POST";
    answer.mimeType = "text/html";
    EXPECT_TRUE(page().respond(answer));
    answer.mimeType = "video/mp4";
    EXPECT_FALSE(page().respond(answer));
    advance(1);
    ASSERT_TRUE(downloadOnTop());
    EXPECT_EQ(downloadOnTop()->downloadRequest().URL()->absoluteString(),
              "http://site.example/fetch");
}

TEST_F(WebBrowserTest, TwoMediaFramesPushTwoDownloadScreens) {
    openPage();
    for (const char* address : {"http://site.example/1.mp4", "http://site.example/2.mp4"}) {
        network().at(address).type("video/mp4").body("x");
        host::WebNavigation frame;
        frame.url = address;
        page().navigate(frame);
    }
    advance(2);
    EXPECT_EQ(navigation().viewControllers().size(), 4U) << "root, browser, and one for each frame";
}

TEST_F(WebBrowserTest, AMediaAnswerAfterTheScreenHasGoneDoesNothing) {
    openPage();
    network().at("http://site.example/late.mp4").type("video/mp4").body("x").after(3);
    page().clickLink("http://site.example/late.mp4");
    navigation().popViewControllerAnimated(false);
    settle();
    advance(5);
    EXPECT_EQ(navigation().viewControllers().size(), 1U);
}

TEST_F(WebBrowserTest, ALeftScreenIsNotToldOfItsPageAnyMore) {
    const auto browser = openPage();
    network().at("http://site.example/a.mp4").type("video/mp4").body("x");
    page().clickLink("http://site.example/a.mp4");
    advance(2);
    navigation().popViewControllerAnimated(false);
    settle();
    network().forgetRequests();

    EXPECT_EQ(browser->webView()->delegate(), nullptr);
    browser->homeAction();
    advance(1);
    EXPECT_TRUE(network().requests().empty()) << "nothing is probed once the screen was left";
    EXPECT_GE(countOfCalls(std::string("load ") + kStart), 1) << "its buttons still work";
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
    UIToolbar toolbar;
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
