// What a page shows, where, and what it may not show.
#include "tests/linux/web/WebKitPageTest.h"

namespace vistrel {
namespace {

using WebKitPresentationTest = WebKitPageTest;

TEST_F(WebKitPresentationTest, WhatWantsANewWindowOpensInThePageItself) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"document.getElementById('to').click()", "GET", ""},
        {"window.open('/two')", "GET", ""},
        {"document.forms[0].submit()", "POST", "a=b"},
        {"document.forms[0].requestSubmit()", "POST", "a=b"},
        {"document.getElementById('other').click()", "POST", "a=b&c=d"},
    };
    server_.servePage(
        "/one", "<a id='to' target='_blank' href='/two'>two</a>"
                "<form method='post' action='/two' target='elsewhere'>"
                "<input type='hidden' name='a' value='b'>"
                "<button id='other' formtarget='_blank' name='c' value='d'>go</button></form>");
    server_.servePage("/two", "two");
    for (const auto& [script, method, body] : cases) {
        SCOPED_TRACE(script);
        ASSERT_TRUE(load("/one"));
        client_.navigations.clear();
        const std::size_t requests = server_.seen("/two").size();
        ASSERT_TRUE(loadsAfter([&, asked = script] { evaluate(asked); }));
        EXPECT_EQ(page_->url(), server_.url("/two"));
        EXPECT_THAT(client_.asked(), ElementsAre(server_.url("/two")));
        ASSERT_EQ(server_.seen("/two").size(), requests + 1);
        EXPECT_EQ(server_.seen("/two").back().method, method);
        EXPECT_EQ(server_.seen("/two").back().body, body);
        EXPECT_TRUE(page_->canGoBack());
    }
}

TEST_F(WebKitPresentationTest, ACoveredPagePausesItsFilmsAndIsSilent) {
    ASSERT_TRUE(
        loadPage("<video></video><script>var paused = 0;"
                 "document.querySelector('video').pause = function () { ++paused; }</script>"));
    ASSERT_TRUE(turnUntil([&] { return gtk_widget_get_mapped(GTK_WIDGET(view())) != FALSE; }));
    EXPECT_FALSE(webkit_web_view_get_is_muted(view()));
    gtk_window_set_child(GTK_WINDOW(window_), nullptr);
    EXPECT_TRUE(webkit_web_view_get_is_muted(view()));
    EXPECT_TRUE(turnUntil([&] { return evaluate("paused") == "1"; }, 5));
    gtk_window_set_child(GTK_WINDOW(window_), GTK_WIDGET(view()));
    EXPECT_FALSE(webkit_web_view_get_is_muted(view()));
}

TEST_F(WebKitPresentationTest, TheEngineOpensNoDialogsAndAnswersQuestionsWithNo) {
    ASSERT_TRUE(loadPage("<script>alert('x'); document.title = String(confirm('sure?')) + "
                         "String(prompt('name?'));</script>"
                         "<input type='file' id='file'><input type='color' id='colour'>"));
    EXPECT_EQ(evaluate("document.title"), "falsenull");
    const guint windows = g_list_model_get_n_items(gtk_window_get_toplevels());
    for (const char* script : {"window.print()", "document.getElementById('file').click()",
                               "document.getElementById('colour').click()",
                               "Notification.requestPermission(); new Notification('x'); 0"})
        evaluate(script);
    turnFor(0.5);
    EXPECT_EQ(g_list_model_get_n_items(gtk_window_get_toplevels()), windows);
    EXPECT_EQ(evaluate("1 + 1"), "2");
}

TEST_F(WebKitPresentationTest, AWidePageIsScaledToTheWidthAndANarrowOneIsNot) {
    page_->setScalesPageToFit(true);
    server_.servePage("/wide",
                      "<body style='margin:0'><div style='width:800px;height:10px'></div></body>");
    server_.servePage("/narrow", "<body style='margin:0'><p>few words</p></body>");
    ASSERT_TRUE(turnUntil([&] { return gtk_widget_get_width(window_) >= 320; }));
    ASSERT_TRUE(load("/wide"));
    EXPECT_TRUE(turnUntil([&] { return evaluate("window.innerWidth >= 799") == "true"; }, 3));
    EXPECT_LE(std::atoi(evaluate("window.innerWidth").c_str()), 820);
    ASSERT_TRUE(load("/narrow"));
    turnFor(0.3);
    EXPECT_EQ(evaluate("window.innerWidth"), "320");
}

TEST_F(WebKitPresentationTest, APageThatHasLoadedBeforeItHasAPlaceIsFittedToThatPlace) {
    server_.servePage("/wide",
                      "<body style='margin:0'><div style='width:800px;height:10px'></div></body>");
    server_.servePage("/narrow", "<body style='margin:0'><p>few words</p></body>");
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

TEST_F(WebKitPresentationTest, ADoubledScreenShowsTheSameLayoutWithTwiceThePixels) {
    auto* content = dynamic_cast<GtkForeignContent*>(page_.get());
    EXPECT_DOUBLE_EQ(content->unitsPerPoint(2), 2);
    ASSERT_TRUE(loadPage("<body style='margin:0'><div id='d' style='width:10px'></div></body>"));
    EXPECT_TRUE(turnUntil([&] { return evaluate("window.innerWidth") == "160"; }, 3))
        << evaluate("window.innerWidth");
}

TEST_F(WebKitPresentationTest, WhatThePageEngineDoesNotShowIsNotDownloadedByItEither) {
    server_.serve("/file.bin", {.type = "application/octet-stream", .body = "bytes"});
    ASSERT_TRUE(loadPage("here"));
    ASSERT_TRUE(failsToLoad(server_.url("/file.bin")));
    EXPECT_EQ(client_.failures[0].code, 102);
    EXPECT_EQ(client_.responses.back().mimeType, "application/octet-stream");
    EXPECT_EQ(page_->url(), server_.url("/page"));
}

}
}
