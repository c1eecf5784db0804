// The real page engine on loopback pages, in a real window.
#include "platform/linux/modules/DeferredWebEngine.h"
#include "platform/linux/window/GtkForeignContent.h"
#include "tests/linux/MainLoop.h"
#include "tests/linux/TestCertificate.h"
#include "tests/linux/web/TestPageServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <gtk/gtk.h>
#include <webkit/webkit.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace vistrel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

struct Recorder : host::WebPageClient {
    bool webPageShouldNavigate(const host::WebNavigation& navigation) override {
        navigations.push_back(navigation);
        return !refuse || navigation.url.find(*refuse) == std::string::npos;
    }
    bool webPageShouldShowResponse(const host::WebResponse& response) override {
        responses.push_back(response);
        return !refuseResponse || response.url.find(*refuseResponse) == std::string::npos;
    }
    void webPageNeedsCredential(
        const host::WebChallenge& challenge,
        std::function<void(std::optional<host::WebCredential>)> answer) override {
        challenges.push_back(challenge);
        answer(challenge.isRejected ? rightCredential : credential);
    }
    void webPageDidStartLoad() override { ++started; }
    void webPageDidFinishLoad() override { ++finished; }
    void webPageDidFailLoad(const host::WebError& error) override { failures.push_back(error); }

    std::vector<std::string> asked() const {
        std::vector<std::string> urls;
        for (const auto& navigation : navigations)
            urls.push_back(navigation.url);
        return urls;
    }
    const host::WebNavigation* navigation(const std::string& url) const {
        for (const auto& one : navigations)
            if (one.url == url)
                return &one;
        return nullptr;
    }

    std::optional<std::string> refuse;
    std::optional<std::string> refuseResponse;
    std::vector<host::WebNavigation> navigations;
    std::vector<host::WebResponse> responses;
    std::vector<host::WebChallenge> challenges;
    std::optional<host::WebCredential> credential;
    std::optional<host::WebCredential> rightCredential;
    int started = 0;
    int finished = 0;
    std::vector<host::WebError> failures;
};

class WebKitPageTest : public testing::Test {
protected:
    static void SetUpTestSuite() { ASSERT_TRUE(gtk_init_check()) << "no display"; }

    void SetUp() override {
        char pattern[] = "/tmp/vistrel-web-XXXXXX";
        folder_ = mkdtemp(pattern);
        makeEngine();
        makePage();
    }

    void TearDown() override {
        closePage();
        engine_.reset();
        g_object_unref(jar_);
        std::error_code error;
        std::filesystem::remove_all(folder_, error);
    }

    void makeEngine() {
        WebEngineSetup setup;
        setup.dataDirectory = folder_ + "/data";
        setup.cacheDirectory = folder_ + "/cache";
        setup.cookieJar = [this] {
            return jar_;
        };
        setup.log = [this](const std::string& line) {
            log_ += line + "\n";
        };
        engine_ = std::make_unique<DeferredWebEngine>(setup);
    }

    void makePage() {
        page_ = engine_->createPage(session_);
        ASSERT_TRUE(page_) << log_;
        page_->setClient(&client_);
        putIntoWindow();
    }

    void putIntoWindow() {
        auto* content = dynamic_cast<GtkForeignContent*>(page_.get());
        ASSERT_TRUE(content);
        window_ = gtk_window_new();
        gtk_window_set_default_size(GTK_WINDOW(window_), 320, 372);
        gtk_window_set_child(GTK_WINDOW(window_), content->widget());
        gtk_window_present(GTK_WINDOW(window_));
    }

    void closePage() {
        page_.reset();
        if (window_)
            gtk_window_destroy(GTK_WINDOW(window_));
        window_ = nullptr;
    }

    void page(const std::string& path, const std::string& body) {
        server_.serve(path, {200, "text/html", body, {}});
    }

    bool load(const std::string& path) {
        const int before = client_.finished;
        page_->load(server_.url(path), {});
        return turnUntil([&] { return client_.finished > before; });
    }

    std::string evaluate(const std::string& script) {
        std::optional<std::string> answer;
        page_->evaluate(script, [&](const std::string& text) { answer = text; });
        turnUntil([&] { return answer.has_value(); });
        return answer.value_or("(no answer)");
    }

    std::string jarValue(const std::string& path, const std::string& name) {
        GUri* uri = g_uri_parse(server_.url(path).c_str(), GUriFlags(SOUP_HTTP_URI_FLAGS), nullptr);
        GSList* cookies = soup_cookie_jar_get_cookie_list(jar_, uri, TRUE);
        std::string value;
        for (GSList* entry = cookies; entry; entry = entry->next)
            if (name == soup_cookie_get_name(static_cast<SoupCookie*>(entry->data)))
                value = soup_cookie_get_value(static_cast<SoupCookie*>(entry->data));
        g_slist_free_full(cookies, reinterpret_cast<GDestroyNotify>(soup_cookie_free));
        g_uri_unref(uri);
        return value;
    }

    void setJarCookie(const std::string& header) {
        GUri* uri = g_uri_parse(server_.url("/").c_str(), GUriFlags(SOUP_HTTP_URI_FLAGS), nullptr);
        soup_cookie_jar_set_cookie(jar_, uri, header.c_str());
        g_uri_unref(uri);
    }

    TestPageServer server_;
    SoupCookieJar* jar_ = soup_cookie_jar_new();
    std::string folder_;
    std::string log_;
    Recorder client_;
    std::unique_ptr<DeferredWebEngine> engine_;
    std::shared_ptr<host::WebPage> page_;
    host::WebSession session_ = host::WebSession::Browsing;
    GtkWidget* window_ = nullptr;
};

TEST_F(WebKitPageTest, AsksOnceForThePageItsFrameAndARedirectThenTellsStartAndEndOnce) {
    page("/page", "<title>Shown</title><iframe src='/frame'></iframe>");
    page("/frame", "inside");
    server_.serve("/start", {302, "text/plain", "", {{"Location", "/page"}}});
    ASSERT_TRUE(load("/start"));
    EXPECT_THAT(client_.asked(),
                ElementsAre(server_.url("/start"), server_.url("/page"), server_.url("/frame")));
    EXPECT_FALSE(client_.navigations[0].isRedirect);
    EXPECT_TRUE(client_.navigations[1].isRedirect);
    EXPECT_EQ(client_.started, 1);
    EXPECT_EQ(client_.finished, 1);
    EXPECT_TRUE(client_.failures.empty());
    EXPECT_EQ(page_->title(), "Shown");
    EXPECT_EQ(page_->url(), server_.url("/page"));
}

TEST_F(WebKitPageTest, WhatTheClientRefusesIsNeverRequested) {
    client_.refuse = "/secret";
    page("/page", "<iframe src='/secret'></iframe>");
    page("/secret", "secret");
    page_->load(server_.url("/secret"), {});
    ASSERT_TRUE(turnUntil([&] { return !client_.navigations.empty(); }));
    turnFor(0.3);
    EXPECT_EQ(client_.started, 0);
    EXPECT_TRUE(client_.failures.empty());
    ASSERT_TRUE(load("/page"));
    EXPECT_THAT(client_.asked(), Contains(server_.url("/secret")).Times(2));
    EXPECT_TRUE(server_.seen("/secret").empty());
}

TEST_F(WebKitPageTest, ALoadIsAskedAboutWithTheHeadersThatTheEngineSends) {
    page("/page", "here");
    ASSERT_TRUE(load("/page"));
    ASSERT_EQ(client_.navigations.size(), 1U);
    const auto sent = server_.seen("/page").at(0);
    EXPECT_THAT(client_.navigations[0].headers,
                ElementsAre(testing::Pair("User-Agent", sent.userAgent),
                            testing::Pair("Accept", sent.accept)));
}

TEST_F(WebKitPageTest, OfTwoLoadsTheYoungerIsAskedAboutAndAStoppedOneIsNot) {
    page("/first", "first");
    page("/second", "second");
    page("/third", "third");
    page_->load(server_.url("/first"), {});
    ASSERT_TRUE(load("/second"));
    EXPECT_THAT(client_.asked(), ElementsAre(server_.url("/second")));
    page_->load(server_.url("/third"), {});
    page_->stopLoading();
    turnFor(0.3);
    EXPECT_EQ(client_.navigations.size(), 1U);
    EXPECT_TRUE(server_.seen("/first").empty() && server_.seen("/third").empty());
    EXPECT_EQ(page_->url(), server_.url("/second"));
    ASSERT_TRUE(load("/third")) << "as ever";
}

TEST_F(WebKitPageTest, HistoryGoesBackAndForwardAndTellsItsNavigationTypes) {
    page("/one", "<a id='to' href='/two'>two</a>");
    page("/two", "two");
    ASSERT_TRUE(load("/one"));
    EXPECT_FALSE(page_->canGoBack());
    evaluate("document.getElementById('to').click()");
    ASSERT_TRUE(turnUntil([&] { return client_.finished == 2; }));
    EXPECT_EQ(client_.navigation(server_.url("/two"))->type, host::WebNavigationType::LinkClicked);
    ASSERT_TRUE(page_->canGoBack());
    page_->goBack();
    ASSERT_TRUE(turnUntil([&] { return client_.finished == 3; }));
    EXPECT_EQ(page_->url(), server_.url("/one"));
    EXPECT_EQ(client_.navigations.back().type, host::WebNavigationType::BackForward);
    EXPECT_TRUE(page_->canGoForward());
    page_->reload();
    ASSERT_TRUE(turnUntil([&] { return client_.finished == 4; }));
    EXPECT_EQ(client_.navigations.back().type, host::WebNavigationType::Reload);
}

TEST_F(WebKitPageTest, APostIsSentOnceAndItsAnswerIsAskedAboutWithTypeAndHeaders) {
    page("/form", "<form id='f' method='post' action='/film'><input name='a' value='b'></form>");
    server_.serve("/film", {200,
                            "Video/MP4; codecs=avc1",
                            "not shown",
                            {{"Content-Disposition", "attachment; filename=film.mp4"}}});
    client_.refuseResponse = "/film";
    ASSERT_TRUE(load("/form"));
    evaluate("document.getElementById('f').submit()");
    ASSERT_TRUE(turnUntil([&] { return client_.responses.size() == 2; }));
    turnFor(0.3);
    EXPECT_EQ(client_.navigation(server_.url("/film"))->method, "POST");
    const host::WebResponse& answer = client_.responses.back();
    EXPECT_EQ(answer.requestMethod, "POST");
    EXPECT_EQ(answer.mimeType, "Video/MP4");
    EXPECT_EQ(answer.status, 200);
    EXPECT_THAT(answer.headers, Contains(std::pair<std::string, std::string>(
                                    "Content-Disposition", "attachment; filename=film.mp4")));
    const auto requests = server_.seen("/film");
    ASSERT_EQ(requests.size(), 1u);
    EXPECT_EQ(requests[0].method, "POST");
    EXPECT_EQ(requests[0].body, "a=b");
    EXPECT_EQ(page_->url(), server_.url("/form"));
}

TEST_F(WebKitPageTest, ACookieThatAPageSetsIsInTheJarBeforeTheNextNavigationIsAsked) {
    struct Asker : Recorder {
        bool webPageShouldNavigate(const host::WebNavigation& navigation) override {
            if (navigation.isRedirect)
                atRedirect = look();
            return Recorder::webPageShouldNavigate(navigation);
        }
        std::function<std::string()> look;
        std::string atRedirect = "(not asked)";
    } asker;
    asker.look = [this] {
        return jarValue("/members", "session");
    };
    page_->setClient(&asker);
    page("/members", "welcome");
    server_.serve("/login",
                  {302,
                   "text/plain",
                   "",
                   {{"Location", "/members"}, {"Set-Cookie", "session=open; Path=/; HttpOnly"}}});
    page_->load(server_.url("/login"), {});
    ASSERT_TRUE(turnUntil([&] { return asker.finished == 1; }));
    EXPECT_EQ(asker.atRedirect, "open");
    EXPECT_EQ(server_.seen("/members").at(0).cookie, "session=open");
}

TEST_F(WebKitPageTest, CookiesOfTheJarGoWithThePagesRequestsAndDeletionsGoBothWays) {
    page("/page", "here");
    setJarCookie("taste=sweet; Path=/; Max-Age=3600");
    ASSERT_TRUE(load("/page"));
    EXPECT_EQ(server_.seen("/page").at(0).cookie, "taste=sweet");

    evaluate("document.cookie = 'taste=; Path=/; Max-Age=0'");
    EXPECT_TRUE(turnUntil([&] { return jarValue("/page", "taste").empty(); }));

    evaluate("document.cookie = 'other=1; Path=/'");
    ASSERT_TRUE(turnUntil([&] { return jarValue("/page", "other") == "1"; }));
    setJarCookie("other=; Path=/; Max-Age=0");
    turnFor(0.3);
    ASSERT_TRUE(load("/page"));
    EXPECT_EQ(server_.seen("/page").at(1).cookie, "");
    EXPECT_EQ(jarValue("/page", "other"), "");
}

TEST_F(WebKitPageTest, CookiesWithAnExpiryAreThereInTheNextRun) {
    server_.serve("/page", {200,
                            "text/html",
                            "here",
                            {{"Set-Cookie", "kept=yes; Path=/; Max-Age=3600"},
                             {"Set-Cookie", "lost=yes; Path=/"}}});
    ASSERT_TRUE(load("/page"));
    ASSERT_TRUE(turnUntil([&] { return jarValue("/page", "kept") == "yes"; }));
    turnFor(0.5);
    closePage();
    engine_.reset();
    g_object_unref(jar_);
    jar_ = soup_cookie_jar_new();
    makeEngine();
    makePage();
    EXPECT_TRUE(turnUntil([&] { return jarValue("/page", "kept") == "yes"; }));
    EXPECT_EQ(jarValue("/page", "lost"), "");
}

TEST_F(WebKitPageTest, FilesOfTheMachineAreRefusedAndOwnSchemesReachTheClientOnly) {
    page("/page", "<iframe src='gmsg://ready?x=1'></iframe>"
                  "<script>setTimeout(function(){location='file:///etc/passwd'},50)</script>");
    ASSERT_TRUE(load("/page"));
    const auto isAsked = [this] {
        const auto asked = client_.asked();
        return std::any_of(asked.begin(), asked.end(), [](const std::string& address) {
            return address.find("gmsg://ready") != std::string::npos;
        });
    };
    ASSERT_TRUE(turnUntil(isAsked));
    turnFor(0.6);
    EXPECT_THAT(client_.asked(), Contains(HasSubstr("gmsg://ready")).Times(1));
    EXPECT_EQ(page_->url(), server_.url("/page"));
    page_->load("file:///etc/passwd", {});
    turnFor(0.5);
    EXPECT_EQ(client_.finished, 1);
    EXPECT_EQ(page_->url(), server_.url("/page"));
    EXPECT_THAT(evaluate("document.documentElement.textContent"), Not(HasSubstr("root:")));
}

TEST_F(WebKitPageTest, LoadsThatEndBadlyFailOnceWithThePhonesNumbers) {
    guint closedPort = 0;
    {
        TestPageServer gone;
        const std::string url = gone.url("");
        closedPort = static_cast<guint>(std::atoi(url.substr(url.rfind(':') + 1).c_str()));
    }
    page_->load("http://127.0.0.1:" + std::to_string(closedPort) + "/", {});
    ASSERT_TRUE(turnUntil([&] { return !client_.failures.empty(); }));
    EXPECT_EQ(client_.failures[0].code, -1004);
    EXPECT_FALSE(client_.failures[0].message.empty());

    struct Stopper : Recorder {
        void webPageDidStartLoad() override {
            Recorder::webPageDidStartLoad();
            page->stopLoading();
        }
        host::WebPage* page = nullptr;
    } stopper;
    stopper.page = page_.get();
    page_->setClient(&stopper);
    page("/page", "never shown");
    page_->load(server_.url("/page"), {});
    ASSERT_TRUE(turnUntil([&] { return !stopper.failures.empty(); }));
    turnFor(0.3);
    ASSERT_EQ(stopper.failures.size(), 1u);
    EXPECT_EQ(stopper.failures[0].code, -999);
    EXPECT_EQ(stopper.finished, 0);
    EXPECT_EQ(client_.failures.size(), 1u);
}

TEST_F(WebKitPageTest, WhatWantsANewWindowOpensInThePageItself) {
    struct Case {
        const char* script;
        const char* method;
        const char* body;
    };
    const Case cases[] = {
        {"document.getElementById('to').click()", "GET", ""},
        {"window.open('/two')", "GET", ""},
        {"document.forms[0].submit()", "POST", "a=b"},
        {"document.forms[0].requestSubmit()", "POST", "a=b"},
        {"document.getElementById('other').click()", "POST", "a=b&c=d"},
    };
    page("/one", "<a id='to' target='_blank' href='/two'>two</a>"
                 "<form method='post' action='/two' target='elsewhere'>"
                 "<input type='hidden' name='a' value='b'>"
                 "<button id='other' formtarget='_blank' name='c' value='d'>go</button></form>");
    page("/two", "two");
    for (const Case& each : cases) {
        SCOPED_TRACE(each.script);
        ASSERT_TRUE(load("/one"));
        client_.navigations.clear();
        const int before = client_.finished;
        const std::size_t requests = server_.seen("/two").size();
        evaluate(each.script);
        ASSERT_TRUE(turnUntil([&] { return client_.finished > before; }, 5));
        EXPECT_EQ(page_->url(), server_.url("/two"));
        EXPECT_THAT(client_.asked(), ElementsAre(server_.url("/two")));
        ASSERT_EQ(server_.seen("/two").size(), requests + 1);
        EXPECT_EQ(server_.seen("/two").back().method, each.method);
        EXPECT_EQ(server_.seen("/two").back().body, each.body);
        EXPECT_TRUE(page_->canGoBack());
    }
}

TEST_F(WebKitPageTest, APageThatOnlyMovesWithinItselfIsToldApart) {
    page("/page", "<a id='to' href='#below'>below</a><p id='below'>a</p>");
    ASSERT_TRUE(load("/page"));
    evaluate("document.getElementById('to').click()");
    ASSERT_TRUE(turnUntil([&] { return page_->url() == server_.url("/page#below"); }, 5));
    turnFor(0.2);
    for (const auto& navigation : client_.navigations)
        EXPECT_EQ(navigation.isSameDocument, navigation.url.find('#') != std::string::npos)
            << navigation.url;
    EXPECT_EQ(server_.seen("/page").size(), 1u);
}

TEST_F(WebKitPageTest, ThePasswordOfASiteIsAskedForOnceAndARejectedOneAgain) {
    server_.serve("/members", {.body = "<title>In</title>", .login = "ann:secret"});
    ASSERT_TRUE(load("/members"));
    ASSERT_EQ(client_.challenges.size(), 1u);
    EXPECT_EQ(client_.challenges[0].origin + "/", server_.url("/"));
    EXPECT_EQ(client_.challenges[0].realm, "Members");
    EXPECT_TRUE(client_.challenges[0].isBasic);
    EXPECT_FALSE(client_.challenges[0].isRejected);
    EXPECT_EQ(page_->title(), "");

    client_.credential = {"ann", "wrong"};
    client_.rightCredential = {"ann", "secret"};
    ASSERT_TRUE(load("/members"));
    ASSERT_TRUE(load("/members"));
    EXPECT_TRUE(turnUntil([&] { return page_->title() == "In"; }, 5));
    ASSERT_EQ(client_.challenges.size(), 3u);
    EXPECT_TRUE(client_.challenges[2].isRejected);
}

TEST_F(WebKitPageTest, ASiteThatCannotProveItselfFailsAndGivesItsPlaceToANotice) {
    const TestCertificate certificate;
    ASSERT_TRUE(certificate.isMade());
    TestPageServer secure(certificate.certificateFile(), certificate.keyFile());
    secure.serve("/page", {.body = "<title>Secret</title>"});
    page_->load(secure.url("/page"), {});
    ASSERT_TRUE(turnUntil([&] { return !client_.failures.empty(); }));
    EXPECT_EQ(client_.failures[0].code, host::WebError::kCertificate);
    EXPECT_EQ(client_.failures[0].url, secure.url("/page"));
    EXPECT_TRUE(secure.seen().empty());

    const std::size_t asked = client_.navigations.size();
    page_->showNotice("<title>Not secure</title>", secure.url("/page"));
    ASSERT_TRUE(turnUntil([&] { return page_->title() == "Not secure"; }));
    EXPECT_EQ(page_->url(), secure.url("/page"));
    EXPECT_EQ(client_.navigations.size(), asked);
    ASSERT_TRUE(turnUntil([&] { return client_.finished == 1; }));
    page_->reload();
    ASSERT_TRUE(turnUntil([&] { return client_.failures.size() == 2; })) << "asks for the page";
}

TEST_F(WebKitPageTest, AGuestSharesNothingWithTheUsersPagesAndNeedsNoPlaceOnTheScreen) {
    page("/page", "<script>document.cookie = 'mine=1; Path=/; Max-Age=3600';"
                  "localStorage.setItem('mine', '1')</script>");
    ASSERT_TRUE(load("/page"));
    ASSERT_TRUE(turnUntil([&] { return jarValue("/page", "mine") == "1"; }));

    const auto shown = page_;
    session_ = host::WebSession::Guest;
    page_ = engine_->createPage(session_);
    page_->setClient(&client_);
    client_.navigations.clear();
    page_->loadHTML("<script>setTimeout(function () {"
                    "location = 'gmsg://ready?' + document.cookie +"
                    "(localStorage.getItem('mine') || '-') + !!navigator.clipboard +"
                    "!!navigator.geolocation + !!window.Notification + !!navigator.mediaDevices;"
                    "}, 50)</script>",
                    server_.url("/base"));
    ASSERT_TRUE(turnUntil([&] { return client_.asked().size() == 2; }));
    EXPECT_THAT(client_.asked(),
                ElementsAre(server_.url("/base"), "gmsg://ready?-falsefalsefalsefalse"));
    for (const auto& navigation : client_.navigations)
        EXPECT_THAT(navigation.headers, Contains(testing::Pair("User-Agent", page_->userAgent())));
    evaluate("document.cookie = 'theirs=1; Path=/; Max-Age=3600'");
    turnFor(0.2);
    EXPECT_EQ(jarValue("/page", "theirs"), "");
    page_ = shown;
}

TEST_F(WebKitPageTest, ACoveredPagePausesItsFilmsAndIsSilent) {
    page("/page", "<video></video><script>var paused = 0;"
                  "document.querySelector('video').pause = function () { ++paused; }</script>");
    ASSERT_TRUE(load("/page"));
    auto* view = WEBKIT_WEB_VIEW(dynamic_cast<GtkForeignContent*>(page_.get())->widget());
    ASSERT_TRUE(turnUntil([&] { return gtk_widget_get_mapped(GTK_WIDGET(view)) != FALSE; }));
    EXPECT_FALSE(webkit_web_view_get_is_muted(view));
    gtk_window_set_child(GTK_WINDOW(window_), nullptr);
    EXPECT_TRUE(webkit_web_view_get_is_muted(view));
    EXPECT_TRUE(turnUntil([&] { return evaluate("paused") == "1"; }, 5));
    gtk_window_set_child(GTK_WINDOW(window_), GTK_WIDGET(view));
    EXPECT_FALSE(webkit_web_view_get_is_muted(view));
}

TEST_F(WebKitPageTest, TheEngineOpensNoDialogs) {
    page("/page", "<input type='file' id='file'><input type='color' id='colour'>");
    ASSERT_TRUE(load("/page"));
    const guint windows = g_list_model_get_n_items(gtk_window_get_toplevels());
    for (const char* script : {"window.print()", "document.getElementById('file').click()",
                               "document.getElementById('colour').click()",
                               "Notification.requestPermission(); new Notification('x'); 0"})
        evaluate(script);
    turnFor(0.5);
    EXPECT_EQ(g_list_model_get_n_items(gtk_window_get_toplevels()), windows);
    EXPECT_EQ(evaluate("1 + 1"), "2");
}

TEST_F(WebKitPageTest, QuestionsOfPagesAreAnsweredWithNoAndStopNothing) {
    page("/page", "<script>alert('x'); document.title = String(confirm('sure?')) + "
                  "String(prompt('name?'));</script>");
    ASSERT_TRUE(load("/page"));
    EXPECT_EQ(evaluate("document.title"), "falsenull");
}

TEST_F(WebKitPageTest, AWidePageIsScaledToTheWidthAndANarrowOneIsNot) {
    page_->setScalesPageToFit(true);
    page("/wide", "<body style='margin:0'><div style='width:800px;height:10px'></div></body>");
    page("/narrow", "<body style='margin:0'><p>few words</p></body>");
    ASSERT_TRUE(turnUntil([&] { return gtk_widget_get_width(window_) >= 320; }));
    ASSERT_TRUE(load("/wide"));
    EXPECT_TRUE(turnUntil([&] { return evaluate("window.innerWidth >= 799") == "true"; }, 3));
    EXPECT_LE(std::atoi(evaluate("window.innerWidth").c_str()), 820);
    ASSERT_TRUE(load("/narrow"));
    turnFor(0.3);
    EXPECT_EQ(evaluate("window.innerWidth"), "320");
}

TEST_F(WebKitPageTest, APageThatHasLoadedBeforeItHasAPlaceIsFittedToThatPlace) {
    page("/wide", "<body style='margin:0'><div style='width:800px;height:10px'></div></body>");
    page("/narrow", "<body style='margin:0'><p>few words</p></body>");
    for (const auto& [path, least, most] :
         {std::tuple("/narrow", 320, 320), std::tuple("/wide", 799, 820)}) {
        closePage();
        page_ = engine_->createPage(session_);
        ASSERT_TRUE(page_) << log_;
        page_->setClient(&client_);
        page_->setScalesPageToFit(true);
        ASSERT_TRUE(load(path));
        turnFor(0.2);
        putIntoWindow();
        ASSERT_TRUE(turnUntil([&] { return gtk_widget_get_width(window_) >= 320; }));
        turnFor(0.5);
        const int width = std::atoi(evaluate("window.innerWidth").c_str());
        EXPECT_GE(width, least) << path;
        EXPECT_LE(width, most) << path;
    }
}

TEST_F(WebKitPageTest, ADoubledScreenShowsTheSameLayoutWithTwiceThePixels) {
    auto* content = dynamic_cast<GtkForeignContent*>(page_.get());
    EXPECT_DOUBLE_EQ(content->unitsPerPoint(2), 2);
    page("/page", "<body style='margin:0'><div id='d' style='width:10px'></div></body>");
    ASSERT_TRUE(load("/page"));
    EXPECT_TRUE(turnUntil([&] { return evaluate("window.innerWidth") == "160"; }, 3))
        << evaluate("window.innerWidth");
}

TEST_F(WebKitPageTest, WarmingUpMakesTheFirstPageAndLeavesNoHistory) {
    closePage();
    engine_.reset();
    makeEngine();
    engine_->warmUp();
    turnFor(1);
    makePage();
    page("/page", "here");
    ASSERT_TRUE(load("/page"));
    EXPECT_FALSE(page_->canGoBack());
    EXPECT_THAT(client_.asked(), ElementsAre(server_.url("/page")));
}

TEST_F(WebKitPageTest, APageWhoseProcessDiesFailsOnceAndCanBeLoadedAgain) {
    page("/page", "<title>Alive</title>");
    ASSERT_TRUE(load("/page"));
    webkit_web_view_terminate_web_process(
        WEBKIT_WEB_VIEW(dynamic_cast<GtkForeignContent*>(page_.get())->widget()));
    ASSERT_TRUE(turnUntil([&] { return !client_.failures.empty(); }));
    turnFor(0.3);
    EXPECT_EQ(client_.failures.size(), 1u);
    ASSERT_TRUE(load("/page"));
    EXPECT_EQ(evaluate("document.title"), "Alive");
}

TEST_F(WebKitPageTest, WhatThePageEngineDoesNotShowIsNotDownloadedByItEither) {
    server_.serve("/file.bin", {200, "application/octet-stream", "bytes", {}});
    page("/page", "here");
    ASSERT_TRUE(load("/page"));
    page_->load(server_.url("/file.bin"), {});
    ASSERT_TRUE(turnUntil([&] { return !client_.failures.empty(); }));
    EXPECT_EQ(client_.failures[0].code, 102);
    EXPECT_EQ(client_.responses.back().mimeType, "application/octet-stream");
    EXPECT_EQ(page_->url(), server_.url("/page"));
}

TEST_F(WebKitPageTest, APageMayGoWhileItIsAsked) {
    struct Leaver : Recorder {
        bool webPageShouldNavigate(const host::WebNavigation&) override {
            leave();
            return true;
        }
        std::function<void()> leave;
    } leaver;
    bool left = false;
    leaver.leave = [&] {
        page_->setClient(nullptr);
        page_.reset();
        left = true;
    };
    page_->setClient(&leaver);
    page("/page", "here");
    page_->load(server_.url("/page"), {});
    ASSERT_TRUE(turnUntil([&] { return left; }));
    turnFor(0.3);
    EXPECT_TRUE(server_.seen("/page").empty());
}

}
}
