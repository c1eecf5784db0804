// Loads, navigations and history on the real page engine.
#include "tests/linux/web/WebKitPageTest.h"

namespace vistrel {
namespace {

TEST_F(WebKitPageTest, AsksOnceForThePageItsFrameAndARedirectThenTellsStartAndEndOnce) {
    server_.servePage("/page", "<title>Shown</title><iframe src='/frame'></iframe>");
    server_.servePage("/frame", "inside");
    server_.redirect("/start", "/page");
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
    server_.servePage("/page", "<iframe src='/secret'></iframe>");
    server_.servePage("/secret", "secret");
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
    ASSERT_TRUE(loadPage("here"));
    ASSERT_EQ(client_.navigations.size(), 1U);
    const auto sent = server_.seen("/page").at(0);
    EXPECT_THAT(client_.navigations[0].headers,
                ElementsAre(testing::Pair("User-Agent", sent.userAgent),
                            testing::Pair("Accept", sent.accept)));
}

TEST_F(WebKitPageTest, OfTwoLoadsTheYoungerIsAskedAboutAndAStoppedOneIsNot) {
    server_.servePage("/first", "first");
    server_.servePage("/second", "second");
    server_.servePage("/third", "third");
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
    server_.servePage("/one", "<a id='to' href='/two'>two</a>");
    server_.servePage("/two", "two");
    ASSERT_TRUE(load("/one"));
    EXPECT_FALSE(page_->canGoBack());
    ASSERT_TRUE(loadsAfter([this] { click("to"); }));
    EXPECT_EQ(client_.navigations.back().type, host::WebNavigationType::LinkClicked);
    ASSERT_TRUE(page_->canGoBack());
    ASSERT_TRUE(loadsAfter([this] { page_->goBack(); }));
    EXPECT_EQ(page_->url(), server_.url("/one"));
    EXPECT_EQ(client_.navigations.back().type, host::WebNavigationType::BackForward);
    EXPECT_TRUE(page_->canGoForward());
    ASSERT_TRUE(loadsAfter([this] { page_->reload(); }));
    EXPECT_EQ(client_.navigations.back().type, host::WebNavigationType::Reload);
}

TEST_F(WebKitPageTest, APostIsSentOnceAndItsAnswerIsAskedAboutWithTypeAndHeaders) {
    server_.servePage(
        "/form", "<form id='f' method='post' action='/film'><input name='a' value='b'></form>");
    server_.serve("/film", {200,
                            "Video/MP4; codecs=avc1",
                            "not shown",
                            {{"Content-Disposition", "attachment; filename=film.mp4"}}});
    client_.refuseResponse = "/film";
    ASSERT_TRUE(load("/form"));
    evaluate("document.getElementById('f').submit()");
    ASSERT_TRUE(turnUntil([&] { return client_.responses.size() == 2; }));
    turnFor(0.3);
    EXPECT_EQ(client_.navigations.back().method, "POST");
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

TEST_F(WebKitPageTest, LoadsThatEndBadlyFailOnceWithThePhonesNumbers) {
    const std::string gone = TestPageServer().url("/");
    ASSERT_TRUE(failsToLoad(gone));
    EXPECT_EQ(client_.failures[0].code, -1004);
    EXPECT_FALSE(client_.failures[0].message.empty());

    client_.onStart = [this] {
        page_->stopLoading();
    };
    server_.servePage("/page", "never shown");
    ASSERT_TRUE(failsToLoad(server_.url("/page")));
    turnFor(0.3);
    ASSERT_EQ(client_.failures.size(), 2U);
    EXPECT_EQ(client_.failures[1].code, -999);
    EXPECT_EQ(client_.finished, 0);
}

TEST_F(WebKitPageTest, APageThatOnlyMovesWithinItselfIsToldApart) {
    ASSERT_TRUE(loadPage("<a id='to' href='#below'>below</a><p id='below'>a</p>"));
    click("to");
    ASSERT_TRUE(turnUntil([&] { return page_->url() == server_.url("/page#below"); }, 5));
    turnFor(0.2);
    for (const auto& navigation : client_.navigations)
        EXPECT_EQ(navigation.isSameDocument, navigation.url.find('#') != std::string::npos)
            << navigation.url;
    EXPECT_EQ(server_.seen("/page").size(), 1u);
}

TEST_F(WebKitPageTest, WarmingUpMakesTheFirstPageAndLeavesNoHistory) {
    closePage();
    engine_.reset();
    makeEngine();
    engine_->warmUp();
    turnFor(1);
    makePage();
    ASSERT_TRUE(loadPage("here"));
    EXPECT_FALSE(page_->canGoBack());
    EXPECT_THAT(client_.asked(), ElementsAre(server_.url("/page")));
}

TEST_F(WebKitPageTest, APageWhoseProcessDiesFailsOnceAndCanBeLoadedAgain) {
    ASSERT_TRUE(loadPage("<title>Alive</title>"));
    webkit_web_view_terminate_web_process(view());
    ASSERT_TRUE(turnUntil([&] { return !client_.failures.empty(); }));
    turnFor(0.3);
    EXPECT_EQ(client_.failures.size(), 1u);
    ASSERT_TRUE(load("/page"));
    EXPECT_EQ(evaluate("document.title"), "Alive");
}

TEST_F(WebKitPageTest, ThePagesMenuKeepsFourEntriesAndAnEmptyOneIsNotShown) {
    GtkWidget* view = dynamic_cast<GtkForeignContent*>(page_.get())->widget();
    const auto shown = [view](const std::vector<WebKitContextMenuAction>& offered) {
        WebKitContextMenu* menu = webkit_context_menu_new();
        for (const auto action : offered)
            webkit_context_menu_append(menu,
                                       webkit_context_menu_item_new_from_stock_action(action));
        gboolean isRefused = FALSE;
        g_signal_emit_by_name(view, "context-menu", menu, nullptr, &isRefused);
        std::vector<WebKitContextMenuAction> kept;
        for (guint i = 0; i < webkit_context_menu_get_n_items(menu) && !isRefused; ++i)
            kept.push_back(webkit_context_menu_item_get_stock_action(
                webkit_context_menu_get_item_at_position(menu, i)));
        g_object_unref(menu);
        return kept;
    };
    EXPECT_THAT(
        shown({WEBKIT_CONTEXT_MENU_ACTION_OPEN_LINK,
               WEBKIT_CONTEXT_MENU_ACTION_OPEN_LINK_IN_NEW_WINDOW,
               WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_LINK_TO_DISK,
               WEBKIT_CONTEXT_MENU_ACTION_COPY_LINK_TO_CLIPBOARD, WEBKIT_CONTEXT_MENU_ACTION_COPY,
               WEBKIT_CONTEXT_MENU_ACTION_CUT, WEBKIT_CONTEXT_MENU_ACTION_PASTE,
               WEBKIT_CONTEXT_MENU_ACTION_INSPECT_ELEMENT}),
        ElementsAre(WEBKIT_CONTEXT_MENU_ACTION_OPEN_LINK,
                    WEBKIT_CONTEXT_MENU_ACTION_COPY_LINK_TO_CLIPBOARD,
                    WEBKIT_CONTEXT_MENU_ACTION_COPY, WEBKIT_CONTEXT_MENU_ACTION_PASTE));
    EXPECT_THAT(
        shown({WEBKIT_CONTEXT_MENU_ACTION_GO_BACK, WEBKIT_CONTEXT_MENU_ACTION_INSPECT_ELEMENT}),
        IsEmpty());
}

TEST_F(WebKitPageTest, APageMayGoWhileItIsAsked) {
    client_.onNavigation = [this](const auto&) {
        page_->setClient(nullptr);
        page_.reset();
    };
    server_.servePage("/page", "here");
    page_->load(server_.url("/page"), {});
    ASSERT_TRUE(turnUntil([&] { return !page_; }));
    turnFor(0.3);
    EXPECT_TRUE(server_.seen("/page").empty());
}

}
}
