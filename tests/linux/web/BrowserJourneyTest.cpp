// The browser on the real engine, network and window, against pages that try to take the
// application with them.
#include "platform/foundation/NSURLCredentialStorage.h"
#include "platform/media/MPMoviePlayerController.h"
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIKey.h"
#include "platform/uikit/UIWebView.h"
#include "tests/linux/web/LoopTurns.h"
#include "tests/linux/web/ProcessTree.h"
#include "tests/linux/web/RealWindow.h"
#include "web/FileDownloadViewController.h"
#include "web/OvoMoviePlayerViewController.h"
#include "web/WebBrowserViewController.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>

namespace vistrel {
namespace {

constexpr double kMegabyte = 1024 * 1024;

class BrowserJourney : public RealWindow {
protected:
    void SetUp() override {
        RealWindow::SetUp();
        serve("/plain", "<title>Plain</title>");
    }

    void serve(const std::string& path, const std::string& body) {
        server_->serve(path, {.body = body});
    }
    std::shared_ptr<WebBrowserViewController> open(const std::string& path) {
        auto browser = WebBrowserViewController::withTitleURL("Page", server_->url(path));
        navigation_->pushViewController(browser, true);
        return browser;
    }
    /// Opens a page and waits until it is there.
    std::shared_ptr<WebBrowserViewController> openPage(const std::string& path,
                                                       const std::string& end) {
        auto browser = open(path);
        EXPECT_TRUE(turnUntil([&] {
            return run(*browser, "document.readyState + location.href") ==
                   "complete" + server_->url(end);
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
    bool hasDownload() {
        return std::dynamic_pointer_cast<FileDownloadViewController>(
                   navigation_->topViewController()) != nullptr;
    }
    static std::string sampleFilm() {
        std::ifstream file(SAMPLES_FOLDER "/colours.mp4", std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
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
    server_->serve(
        "/entrance",
        {302, "text/html", "", {{"Location", "/hall"}, {"Set-Cookie", "visitor=1; Path=/"}}});
    serve("/hall", "<a id='film' href='/files/100% Wolf.mp4'>film</a>"
                   "<a id='go' href='/go'>go</a><a id='members' href='/members'>members</a>");
    server_->serve("/files/100% Wolf.mp4", {.type = "video/mp4", .body = "film"});
    server_->serve("/go", {302, "text/html", "", {{"Location", "/moved.mp4"}}});
    server_->serve("/moved.mp4", {.type = "video/mp4", .body = "film"});
    server_->serve("/members", {.body = "<title>In</title>", .login = "ann:secret"});

    const struct {
        const char* link;
        const char* film;
        bool engineGetsFilm; ///< it leaves a stray "%" as it is, which the server refuses
    } links[] = {{"film", "/files/100%25%20Wolf.mp4", false}, {"go", "/moved.mp4", true}};
    for (const auto& each : links) {
        const auto browser = openPage("/entrance", "/hall");
        run(*browser, std::string("document.getElementById('") + each.link + "').click()");
        ASSERT_TRUE(turnUntil([&] { return hasDownload(); }, 5)) << each.link;
        turnFor(1);
        EXPECT_EQ(navigation_->viewControllers().size(), 3u) << "one tap, one screen";
        EXPECT_EQ(
            std::dynamic_pointer_cast<FileDownloadViewController>(navigation_->topViewController())
                ->downloadRequest()
                .URL()
                ->absoluteString(),
            server_->url(each.film));
        if (each.engineGetsFilm) {
            EXPECT_EQ(run(*browser, "location.href"), server_->url("/hall")) << "never shown";
        }
        backToRoot();
    }

    const auto browser = openPage("/entrance", "/hall");
    run(*browser, "document.getElementById('members').click()");
    ASSERT_TRUE(turnUntil([] { return !UIAlertView::visibleAlerts().empty(); }, 5));
    UIAlertView::visibleAlerts().front()->dismissWithClickedButtonIndex(0, false);
}

TEST_F(BrowserJourney, HostilePagesDoNotTakeTheApplicationWithThem) {
    std::string frames;
    std::string slow;
    for (int i = 0; i < 300; ++i) {
        frames += "<iframe src='/film.mp4?" + std::to_string(i) + "'></iframe>";
        slow += i < 20 ? "<iframe src='/silent?" + std::to_string(i) + "'></iframe>" : "";
    }
    server_->serve("/film.mp4", {.type = "video/mp4", .body = "film"});
    server_->serve("/silent", {.isSilent = true});
    serve("/frames", frames);
    serve("/slow", slow);
    serve("/fragments", "<script>var n=0;setInterval(function(){"
                        "for(var i=0;i<500;i++)location.hash=n++},0)</script>");
    serve("/print", "<script>setInterval(function(){print()},50)</script>");

    // Everything that stays for good is there before the first measure.
    openPage("/plain", "/plain");
    backToRoot();
    turnFor(1);
    const double before = residentBytes();
    for (const char* path : {"/frames", "/slow", "/fragments", "/print"}) {
        SCOPED_TRACE(path);
        std::weak_ptr<WebBrowserViewController> browser = open(path);
        LoopTurns turns;
        turnFor(3);
        EXPECT_LT(turns.longestSeconds(), 0.1);
        EXPECT_LE(navigation_->viewControllers().size(), 4u);
        EXPECT_EQ(g_list_model_get_n_items(gtk_window_get_toplevels()), 1u);
        while (navigation_->viewControllers().size() > 2) {
            navigation_->popViewControllerAnimated(true);
            turnFor(0.5);
        }
        navigation_->popViewControllerAnimated(true);
        EXPECT_TRUE(turnUntil([&] { return browser.expired(); }, 1)) << "Back works";
        EXPECT_TRUE(turnUntil([] { return descendantsNamed("WebKitWebProces") == 0; }, 5))
            << descendantsNamed("WebKitWebProces");
    }
    turnFor(1);
    EXPECT_LT((residentBytes() - before) / kMegabyte, 30);
}

TEST_F(BrowserJourney, AFilmBehindCookiesAPasswordAndARedirectPlays) {
    server_->serve("/hall", {.body = "hall", .headers = {{"Set-Cookie", "member=7; Path=/"}}});
    server_->serve("/start.mp4",
                   {302, "text/plain", "", {{"Location", "/film.mp4"}}, "ann:secret"});
    server_->serve("/film.mp4", {.type = "video/mp4", .body = sampleFilm(), .login = "ann:secret"});
    openPage("/hall", "/hall");
    const auto url = *NSURL::URLWithString(server_->url("/start.mp4"));
    NSURLCredentialStorage::sharedCredentialStorage().setCredentialForURL({"ann", "secret"}, url);
    const auto screen = FileDownloadViewController::withURL(url);
    navigation_->pushViewController(screen, false);
    const auto player = play(*screen);
    ASSERT_TRUE(player);
    EXPECT_TRUE(turnUntil([&] { return player->mp()->framesShown() > 5; }));
    EXPECT_EQ(server_->seen("/film.mp4").back().cookie, "member=7");
    closeFilm();
    NSURLCredentialStorage::sharedCredentialStorage().removeAll();
}

TEST_F(BrowserJourney, AFilmIsUprightInALandscapeWindowWhereNobodyTurnsTheMachine) {
    server_->serve("/film.mp4", {.type = "video/mp4", .body = sampleFilm()});
    const auto screen =
        FileDownloadViewController::withURL(*NSURL::URLWithString(server_->url("/film.mp4")));
    navigation_->pushViewController(screen, false);
    GtkWidget* widget = shown_->screen().widget();
    const auto hasSize = [widget](int width, int height) {
        return gtk_widget_get_width(widget) == width && gtk_widget_get_height(widget) == height;
    };
    turnFor(0.3);
    ASSERT_TRUE(play(*screen));
    EXPECT_TRUE(turnUntil([&] { return hasSize(480, 320); }));
    // The phone shows the film's upper left corner in its upper right one.
    const CGPoint corner = shown_->screen().screenTransform().apply(CGPoint{320, 0});
    EXPECT_NEAR(corner.x, 0, 1e-9);
    EXPECT_NEAR(corner.y, 0, 1e-9);
    closeFilm();
    EXPECT_TRUE(turnUntil([&] { return hasSize(320, 480); }));
}

TEST_F(BrowserJourney, VisitsDownloadsAndFilmsLeaveNothingOpen) {
    // The server shares this process and would keep connections that its clients have closed.
    server_->serve(
        "/film.mp4",
        {.type = "video/mp4", .body = sampleFilm(), .headers = {{"Connection", "close"}}});
    server_->serve("/page", {.body = "<a id='film' href='/film.mp4'>film</a>",
                             .headers = {{"Connection", "close"}}});

    const auto visit = [&] {
        const auto browser = openPage("/page", "/page");
        run(*browser, "document.getElementById('film').click()");
        ASSERT_TRUE(turnUntil([&] { return hasDownload(); }, 5));
        const auto screen =
            std::static_pointer_cast<FileDownloadViewController>(navigation_->topViewController());
        screen->download();
        ASSERT_TRUE(turnUntil([] { return !UIAlertView::visibleAlerts().empty(); }, 5));
        UIAlertView::visibleAlerts().front()->dismissWithClickedButtonIndex(0, false);
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
    const char* asked = std::getenv("VISTREL_SOAK_ROUNDS");
    for (int i = 0; i < (asked ? std::atoi(asked) : 4); ++i) {
        visit();
        if (asked)
            std::printf("round %d: %d descriptors, %d threads, %.0f MiB\n", i, openDescriptors(),
                        runningThreads(), residentBytes() / kMegabyte);
        EXPECT_LE(openDescriptors(), descriptors + 3);
        EXPECT_LE(runningThreads(), threads + 3);
    }
}

}
}
