// The browser on the real engine, network and window, against pages that try to take the
// application with them.
#include "platform/foundation/NSURLCredentialStorage.h"
#include "platform/media/MPMoviePlayerController.h"
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIKey.h"
#include "platform/uikit/UIWebView.h"
#include "tests/linux/web/ProcessTree.h"
#include "tests/linux/web/RealWindow.h"
#include "web/FileDownloadViewController.h"
#include "web/OvoMoviePlayerViewController.h"
#include "web/WebBrowserViewController.h"

#include <ctime>

namespace vistrel {
namespace {

double secondsOfThisThread() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// The longest time that the loop works from one wait for events to the next; a busy machine does
/// not count.
double longestTurnIn(double seconds) {
    double longest = 0;
    double began = secondsOfThisThread();
    turnUntil(
        [&] {
            longest = std::max(longest, secondsOfThisThread() - began);
            began = secondsOfThisThread();
            return false;
        },
        seconds);
    return longest;
}

class BrowserJourney : public RealWindow {
protected:
    std::shared_ptr<WebBrowserViewController> open(const std::string& path) {
        auto browser = WebBrowserViewController::withTitleURL("Page", server_.url(path));
        navigation_->pushViewController(browser, true);
        return browser;
    }
    /// Opens a page and waits until it is there.
    std::shared_ptr<WebBrowserViewController> openPage(const std::string& path,
                                                       const std::string& end) {
        auto browser = open(path);
        EXPECT_TRUE(turnUntil([&] {
            return run(*browser, "document.readyState + location.href") ==
                   "complete" + server_.url(end);
        }));
        return browser;
    }
    static std::string run(WebBrowserViewController& browser, const std::string& script) {
        std::optional<std::string> result;
        browser.webView()->stringByEvaluatingJavaScriptFromString(
            script, [&](const std::string& text) { result = text; });
        turnUntil([&] { return result.has_value(); }, 3);
        return result.value_or("");
    }
    /// The downloads' screen that comes up; null when none does.
    std::shared_ptr<FileDownloadViewController> awaitDownload() {
        turnUntil([&] { return downloadOnTop() != nullptr; }, 5);
        return downloadOnTop();
    }
    std::shared_ptr<FileDownloadViewController> downloadOnTop() {
        return std::dynamic_pointer_cast<FileDownloadViewController>(
            navigation_->topViewController());
    }
    static void click(WebBrowserViewController& browser, const std::string& id) {
        run(browser, "document.getElementById('" + id + "').click()");
    }
    /// Waits for an alert and dismisses it.
    static bool dismissAlert() {
        if (!turnUntil([] { return !UIAlertView::visibleAlerts().empty(); }, 5))
            return false;
        UIAlertView::visibleAlerts().front()->dismissWithClickedButtonIndex(0, false);
        return true;
    }
    /// Taps Play; null when no film screen comes up.
    std::shared_ptr<OvoMoviePlayerViewController> play(FileDownloadViewController& screen) {
        screen.play();
        return std::dynamic_pointer_cast<OvoMoviePlayerViewController>(
            navigation_->modalViewController());
    }
    /// Leaves the film by Escape.
    void closeFilm() {
        UIKey escape;
        escape.code = UIKeyCode::Escape;
        UIApplication::sharedApplication().events().sendKey(escape);
        EXPECT_TRUE(turnUntil([&] { return !navigation_->modalViewController(); }, 5));
    }
    void backToRoot() {
        navigation_->popToRootViewControllerAnimated(false);
        turnFor(0.2);
    }
};

TEST_F(BrowserJourney, SitesThatOpenOnlyWithCarefulProbes) {
    server_.redirect("/entrance", "/hall", {.headers = {{"Set-Cookie", "visitor=1; Path=/"}}});
    server_.servePage("/hall",
                      "<a id='film' href='/files/100% Wolf.mp4'>film</a>"
                      "<a id='go' href='/go'>go</a><a id='members' href='/members'>members</a>");
    server_.serveFilm("/files/100% Wolf.mp4");
    server_.redirect("/go", "/moved.mp4");
    server_.serveFilm("/moved.mp4");
    server_.serve("/members", {.body = "<title>In</title>", .login = "ann:secret"});

    // The engine leaves a stray "%" as it is, which the server refuses: it gets one film only.
    const std::tuple<const char*, const char*, bool> links[] = {
        {"film", "/files/100%25%20Wolf.mp4", false}, {"go", "/moved.mp4", true}};
    for (const auto& [link, film, engineGetsFilm] : links) {
        const auto browser = openPage("/entrance", "/hall");
        click(*browser, link);
        ASSERT_TRUE(awaitDownload()) << link;
        turnFor(1);
        EXPECT_EQ(navigation_->viewControllers().size(), 3u) << "one tap, one screen";
        EXPECT_EQ(downloadOnTop()->downloadRequest().URL()->absoluteString(), server_.url(film));
        if (engineGetsFilm) {
            EXPECT_EQ(run(*browser, "location.href"), server_.url("/hall")) << "never shown";
        }
        backToRoot();
    }

    click(*openPage("/entrance", "/hall"), "members");
    EXPECT_TRUE(dismissAlert());
}

TEST_F(BrowserJourney, HostilePagesDoNotTakeTheApplicationWithThem) {
    const auto framesOf = [](const std::string& path, int count) {
        std::string frames;
        for (int i = 0; i < count; ++i)
            frames += "<iframe src='" + path + "?" + std::to_string(i) + "'></iframe>";
        return frames;
    };
    server_.servePage("/plain", "<title>Plain</title>");
    server_.serveFilm("/film.mp4");
    server_.serve("/silent", {.isSilent = true});
    server_.servePage("/frames", framesOf("/film.mp4", 300));
    server_.servePage("/slow", framesOf("/silent", 20));
    server_.servePage("/fragments", "<script>var n=0;setInterval(function(){"
                                    "for(var i=0;i<500;i++)location.hash=n++},0)</script>");
    server_.servePage("/print", "<script>setInterval(function(){print()},50)</script>");

    // Everything that stays for good is there before the first measure.
    openPage("/plain", "/plain");
    backToRoot();
    turnFor(1);
    const double before = residentMegabytes();
    for (const char* path : {"/frames", "/slow", "/fragments", "/print"}) {
        SCOPED_TRACE(path);
        std::weak_ptr<WebBrowserViewController> browser = open(path);
        EXPECT_LT(longestTurnIn(3), 0.1);
        EXPECT_LE(navigation_->viewControllers().size(), 4u);
        EXPECT_EQ(g_list_model_get_n_items(gtk_window_get_toplevels()), 1u);
        while (navigation_->viewControllers().size() > 2) {
            navigation_->popViewControllerAnimated(true);
            turnFor(0.5);
        }
        navigation_->popViewControllerAnimated(true);
        EXPECT_TRUE(turnUntil([&] { return browser.expired(); }, 1)) << "Back works";
        EXPECT_TRUE(turnUntil([] { return descendantsNamed("WebKitWebProces").empty(); }, 5));
    }
    turnFor(1);
    EXPECT_LT(residentMegabytes() - before, 30);
}

TEST_F(BrowserJourney, AFilmBehindCookiesAPasswordAndARedirectPlays) {
    server_.serve("/hall", {.body = "hall", .headers = {{"Set-Cookie", "member=7; Path=/"}}});
    server_.redirect("/start.mp4", "/film.mp4", {.login = "ann:secret"});
    server_.serveFilm("/film.mp4", {.login = "ann:secret"});
    openPage("/hall", "/hall");
    const auto url = *NSURL::URLWithString(server_.url("/start.mp4"));
    NSURLCredentialStorage::sharedCredentialStorage().setCredentialForURL({"ann", "secret"}, url);
    const auto screen = FileDownloadViewController::withURL(url);
    navigation_->pushViewController(screen, false);
    const auto player = play(*screen);
    ASSERT_TRUE(player);
    EXPECT_TRUE(turnUntil([&] { return player->mp()->framesShown() > 5; }));
    EXPECT_EQ(server_.seen("/film.mp4").back().cookie, "member=7");
    closeFilm();
    NSURLCredentialStorage::sharedCredentialStorage().removeAll();
}

TEST_F(BrowserJourney, AFilmIsUprightInALandscapeWindowWhereNobodyTurnsTheMachine) {
    server_.serveFilm("/film.mp4");
    const auto screen =
        FileDownloadViewController::withURL(*NSURL::URLWithString(server_.url("/film.mp4")));
    navigation_->pushViewController(screen, false);
    GtkWidget* widget = shown_.screen().widget();
    const auto hasSize = [widget](int width, int height) {
        return gtk_widget_get_width(widget) == width && gtk_widget_get_height(widget) == height;
    };
    turnFor(0.3);
    ASSERT_TRUE(play(*screen));
    EXPECT_TRUE(turnUntil([&] { return hasSize(480, 320); }));
    // The phone shows the film's upper left corner in its upper right one.
    const CGPoint corner = shown_.screen().screenTransform().apply(CGPoint{320, 0});
    EXPECT_NEAR(corner.x, 0, 1e-9);
    EXPECT_NEAR(corner.y, 0, 1e-9);
    closeFilm();
    EXPECT_TRUE(turnUntil([&] { return hasSize(320, 480); }));
}

TEST_F(BrowserJourney, VisitsDownloadsAndFilmsLeaveNothingOpen) {
    // The server shares this process and would keep connections that its clients have closed.
    const TestPageServer::Page closes{.headers = {{"Connection", "close"}}};
    server_.serveFilm("/film.mp4", closes);
    server_.serve("/page",
                  {.body = "<a id='film' href='/film.mp4'>film</a>", .headers = closes.headers});

    const auto visit = [&] {
        const auto browser = openPage("/page", "/page");
        click(*browser, "film");
        const auto screen = awaitDownload();
        ASSERT_TRUE(screen);
        screen->download();
        ASSERT_TRUE(dismissAlert());
        const auto player = play(*screen);
        ASSERT_TRUE(player);
        ASSERT_TRUE(turnUntil([&] { return player->mp()->framesShown() > 5; }));
        turnFor(0.5);
        closeFilm();
        turnFor(0.6);
        backToRoot();
    };
    // Pools of the engine and the players fill up first.
    for (int i = 0; i < 3; ++i)
        visit();
    const int descriptors = openDescriptors();
    const int threads = runningThreads();
    for (int i = 0; i < 4; ++i) {
        visit();
        EXPECT_LE(openDescriptors(), descriptors + 3);
        EXPECT_LE(runningThreads(), threads + 3);
    }
}

}
}
