#include "platform/uikit/UIWebView.h"

#include "platform/foundation/NSError.h"
#include "platform/foundation/NSURLResponse.h"
#include "tests/support/HostTest.h"

#include <functional>
#include <gmock/gmock.h>

namespace vistrel {
namespace {

using support::ScriptedWebPage;
using testing::ElementsAre;
using testing::IsEmpty;

struct Delegate : UIWebViewDelegate {
    bool webViewShouldStartLoadWithRequest(UIWebView&, const NSURLRequest& request,
                                           UIWebViewNavigationType type) override {
        events.push_back("ask " + request.HTTPMethod() + " " +
                         (request.URL() ? request.URL()->absoluteString() : "nowhere") + " " +
                         std::to_string(static_cast<int>(type)));
        requests.push_back(request);
        if (onAsk)
            onAsk();
        return allows;
    }
    void webViewDidStartLoad(UIWebView& view) override {
        events.emplace_back(view.isLoading() ? "start" : "start, not loading");
    }
    void webViewDidFinishLoad(UIWebView& view) override {
        events.emplace_back(view.isLoading() ? "finish, still loading" : "finish");
        if (onFinish)
            onFinish();
    }
    void webViewDidFailLoadWithError(UIWebView&, const NSError& error) override {
        events.push_back("fail " + error.domain() + " " + std::to_string(error.code()) + " " +
                         error.localizedDescription());
    }
    bool webViewShouldShowResponse(UIWebView&, const NSURLResponse& response) override {
        answers.push_back(response);
        return showsAnswers;
    }

    bool allows = true;
    bool showsAnswers = true;
    std::function<void()> onAsk;
    std::function<void()> onFinish;
    std::vector<std::string> events;
    std::vector<NSURLRequest> requests;
    std::vector<NSURLResponse> answers;
};

class UIWebViewTest : public support::HostTest {
protected:
    UIWebViewTest() { view_->setDelegate(owner_); }

    void load(const std::string& url) {
        view_->loadRequest(NSURLRequest(NSURL::URLWithString(url)));
    }
    ScriptedWebPage& page() { return *webEngine().page(); }

    std::shared_ptr<Delegate> owner_ = std::make_shared<Delegate>();
    Delegate& delegate_ = *owner_;
    std::shared_ptr<UIWebView> view_ = std::make_shared<UIWebView>(CGRectMake(0, 0, 320, 372));
};

TEST_F(UIWebViewTest, ThePageIsCreatedAtTheFirstLoadWithEarlierSettings) {
    view_->setScalesPageToFit(true);
    view_->setOpaque(false);
    view_->goBack();
    view_->stopLoading();
    EXPECT_FALSE(view_->canGoBack());
    EXPECT_EQ(view_->foreignContent(), nullptr);
    EXPECT_TRUE(webEngine().pages().empty());
    load("http://site/");
    ASSERT_EQ(webEngine().pages().size(), 1u);
    EXPECT_TRUE(page().scalesPageToFit());
    EXPECT_TRUE(page().hasTransparentBackground());
    EXPECT_EQ(view_->foreignContent(), &page());
    load("http://site/2");
    EXPECT_EQ(webEngine().pages().size(), 1u);
    EXPECT_EQ(page().session(), host::WebSession::Browsing);
    EXPECT_EQ(view_->request().URL(), std::nullopt);
    turn();
    EXPECT_EQ(view_->request().URL(), NSURL::URLWithString("http://site/2"));

    UIWebView guest({}, UIWebViewSession::Guest);
    guest.setMediaPlaybackRequiresUserAction(true);
    guest.loadHTMLStringBaseURL("<p>ad", NSURL::URLWithString("http://ads/"));
    EXPECT_EQ(page().session(), host::WebSession::Guest);
    EXPECT_TRUE(page().mediaNeedsTouch());
    EXPECT_THAT(page().calls(), ElementsAre("loadHTML http://ads/"));
    page().challenge({"http://ads", "realm"});
    EXPECT_THAT(page().credentials(), ElementsAre("none")) << "guests may not ask for passwords";
}

TEST_F(UIWebViewTest, ALoadIsMadeOnlyWhenTheDelegateAllowsIt) {
    load("http://site/a");
    EXPECT_THAT(delegate_.events, IsEmpty());
    turn();
    page().finishLoad();
    EXPECT_THAT(delegate_.events, ElementsAre("ask GET http://site/a 5", "start", "finish"));
    delegate_.allows = false;
    load("http://site/b");
    turn();
    EXPECT_EQ(delegate_.events.back(), "ask GET http://site/b 5");
    EXPECT_FALSE(page().isLoading());
}

TEST_F(UIWebViewTest, OnlyWebPagesAreLoaded) {
    for (const char* url : {"file:///etc/passwd", "ftp://site/", "gmsg://x", "data:text/html,x"})
        load(url);
    view_->loadRequest(NSURLRequest(std::nullopt));
    NSURLRequest post(NSURL::URLWithString("http://site/"));
    post.setHTTPMethod("POST");
    view_->loadRequest(post);
    turn();
    EXPECT_TRUE(webEngine().pages().empty());
    for (const char* url : {"HTTP://site/", "https://site/", "about:blank"})
        load(url);
    EXPECT_THAT(page().calls(),
                ElementsAre("load HTTP://site/", "load https://site/", "load about:blank"));
}

TEST_F(UIWebViewTest, NavigationsKeepTheirTypeMethodAndHeaders) {
    load("http://site/a");
    turn();
    delegate_.events.clear();
    page().clickLink("http://site/link");
    page().submitForm("http://site/form");
    page().navigate({"http://site/again", "GET", {}, host::WebNavigationType::Reload});
    page().navigate({"http://site/back", "GET", {}, host::WebNavigationType::BackForward});
    page().navigate({"http://site/form", "POST", {}, host::WebNavigationType::FormResubmitted});
    page().navigateFrame({"gmsg://load?x=1", "GET", {{"Referer", "http://site/a"}}});
    std::vector<std::string> asked;
    for (const std::string& event : delegate_.events)
        if (event.starts_with("ask"))
            asked.push_back(event);
    EXPECT_THAT(asked, ElementsAre("ask GET http://site/link 0", "ask POST http://site/form 1",
                                   "ask GET http://site/again 3", "ask GET http://site/back 2",
                                   "ask POST http://site/form 4", "ask GET gmsg://load?x=1 5"));
    EXPECT_EQ(delegate_.requests.back().valueForHTTPHeaderField("referer"), "http://site/a");
}

TEST_F(UIWebViewTest, EveryAddressOfTheEngineBecomesValid) {
    load("http://site/a");
    turn();
    const std::pair<const char*, const char*> cases[] = {
        {"gmsg://m?x={\"a\":1}|b%20c&t=Gr\xC3\xBC\xC3\x9F e#f",
         "gmsg://m?x=%7B%22a%22:1%7D%7Cb%20c&t=Gr%C3%BC%C3%9F%20e#f"},
        {"http://site/files/100% Wolf.mp4", "http://site/files/100%25%20Wolf.mp4"},
        {"http://site/?name=50%.mp4&x=%zz%4", "http://site/?name=50%25.mp4&x=%25zz%254"},
        {"http://site/%25%41", "http://site/%25%41"},
    };
    for (const auto& [engine, expected] : cases) {
        page().navigateFrame({engine, "GET", {}});
        ASSERT_TRUE(delegate_.requests.back().URL()) << engine;
        EXPECT_EQ(delegate_.requests.back().URL()->absoluteString(), expected);
    }
    EXPECT_EQ(delegate_.requests.back().valueForHTTPHeaderField("User-Agent"), "Scripted/1.0");
}

TEST_F(UIWebViewTest, TheDelegateDecidesWhetherAResponseIsShown) {
    load("http://site/a");
    turn();
    delegate_.showsAnswers = false;
    EXPECT_FALSE(page().respond(
        {"http://site/100% a b.mp4",
         "video/mp4",
         200,
         {{"Content-Disposition", "attachment; filename=\"a b.mp4\""}, {"Content-Length", "4711"}},
         true,
         "POST"}));
    ASSERT_EQ(delegate_.answers.size(), 1u);
    const NSURLResponse& answer = delegate_.answers[0];
    EXPECT_EQ(answer.URL().absoluteString(), "http://site/100%25%20a%20b.mp4");
    EXPECT_EQ(answer.MIMEType(), "video/mp4");
    EXPECT_EQ(answer.expectedContentLength(), 4711);
    EXPECT_EQ(answer.suggestedFilename(), "a b.mp4");
    delegate_.showsAnswers = true;
    EXPECT_TRUE(page().respond({"http://site/form",
                                "video/mp4",
                                200,
                                {{"Content-Encoding", "gzip"}, {"Content-Length", "4711"}},
                                true,
                                "GET"}));
    EXPECT_EQ(delegate_.answers[1].expectedContentLength(), -1);
}

TEST_F(UIWebViewTest, FailuresHaveTheirDomainCodeAndDescription) {
    load("http://site/a");
    turn();
    page().failLoad({-999, "cancelled", "http://site/a"});
    page().startLoad();
    page().failLoad({102, "interrupted", "http://site/a"});
    EXPECT_THAT(delegate_.events, ElementsAre("ask GET http://site/a 5", "start",
                                              "fail NSURLErrorDomain -999 cancelled", "start",
                                              "fail WebKitErrorDomain 102 interrupted"));
    EXPECT_FALSE(view_->isLoading());
}

TEST_F(UIWebViewTest, WithoutADelegateEverythingIsAllowed) {
    for (const bool destroyed : {false, true}) {
        if (destroyed)
            owner_.reset();
        else
            view_->setDelegate({});
        load("http://site/a");
        turn();
        EXPECT_EQ(view_->delegate(), nullptr);
        EXPECT_TRUE(page().isLoading());
        EXPECT_TRUE(page().respond({"http://site/form", "video/mp4", 200, {}, true, "POST"}));
        page().finishLoad();
        EXPECT_FALSE(view_->isLoading());
        load("http://site/b");
        turn();
        page().failLoad({102, "interrupted", "http://site/b"});
        EXPECT_FALSE(view_->isLoading());
        view_->setDelegate(owner_);
    }
}

TEST_F(UIWebViewTest, TheViewMayBeDestroyedInEachCallback) {
    delegate_.onAsk = [this] {
        view_.reset();
    };
    load("http://site/a");
    turn();
    EXPECT_TRUE(webEngine().pages().empty());

    delegate_.onAsk = {};
    delegate_.onFinish = [this] {
        view_.reset();
    };
    view_ = std::make_shared<UIWebView>();
    view_->setDelegate(owner_);
    load("http://site/b");
    turn();
    page().finishLoad();
    EXPECT_TRUE(webEngine().pages().empty());
    EXPECT_EQ(delegate_.events.back(), "finish");
}

TEST_F(UIWebViewTest, AScriptsResultComesLaterAndIsEmptyWithoutAPageEngine) {
    webEngine().setScriptResult("document.title", "Title");
    for (const bool unavailable : {true, false}) {
        webEngine().setUnavailable(unavailable);
        load("http://site/a");
        turn();
        std::optional<std::string> result;
        view_->stringByEvaluatingJavaScriptFromString(
            "document.title", [&](const std::string& text) { result = text; });
        view_->stringByEvaluatingJavaScriptFromString("nothing()");
        EXPECT_FALSE(result);
        turn();
        EXPECT_EQ(result, unavailable ? "" : "Title");
        EXPECT_EQ(view_->userAgent(), unavailable ? "" : "Scripted/1.0");
        EXPECT_EQ(delegate_.events.empty(), unavailable);
    }
}

}
}
