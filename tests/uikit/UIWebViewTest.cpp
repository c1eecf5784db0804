#include "platform/uikit/UIWebView.h"

#include "platform/foundation/NSError.h"
#include "platform/foundation/NSURLResponse.h"
#include "tests/support/Heard.h"
#include "tests/support/HostTest.h"

namespace vistrel {
namespace {

using support::ScriptedWebPage;

struct Delegate : UIWebViewDelegate {
    bool webViewShouldStartLoadWithRequest(UIWebView&, const NSURLRequest& request,
                                           UIWebViewNavigationType type) override {
        heard("ask " + request.HTTPMethod() + " " + request.URL()->absoluteString() + " " +
              std::to_string(static_cast<int>(type)));
        last = request;
        if (onAsk)
            onAsk();
        return allows;
    }
    void webViewDidStartLoad(UIWebView& view) override {
        heard(view.isLoading() ? "start" : "start without loading");
    }
    void webViewDidFinishLoad(UIWebView& view) override {
        heard(view.isLoading() ? "finish while loading" : "finish");
        if (onFinish)
            onFinish();
    }
    void webViewDidFailLoadWithError(UIWebView&, const NSError& error) override {
        heard("fail " + error.domain() + " " + std::to_string(error.code()) + " " +
              error.localizedDescription());
    }
    bool webViewShouldShowResponse(UIWebView&, const NSURLResponse& response) override {
        answers.push_back(response);
        return allows;
    }

    bool allows = true;
    std::function<void()> onAsk;
    std::function<void()> onFinish;
    support::Heard heard;
    NSURLRequest last{std::nullopt};
    std::vector<NSURLResponse> answers;
};

class UIWebViewTest : public support::HostTest {
protected:
    UIWebViewTest() { view_->setDelegate(owner_); }

    void load(const std::string& url) {
        view_->loadRequest(NSURLRequest(NSURL::URLWithString(url)));
    }
    /// Until the page is loading; forgets what the delegate heard.
    void open(const std::string& url) {
        load(url);
        turn();
        (void)heard();
    }
    std::string heard() { return delegate_.heard.take(); }
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
    EXPECT_EQ(heard(), "");
    turn();
    page().finishLoad();
    EXPECT_EQ(heard(), "ask GET http://site/a 5, start, finish");
    delegate_.allows = false;
    load("http://site/b");
    turn();
    EXPECT_EQ(heard(), "ask GET http://site/b 5");
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
    using enum host::WebNavigationType;
    open("http://site/a");
    delegate_.allows = false;
    page().clickLink("http://site/link");
    page().submitForm("http://site/form");
    page().navigate({"http://site/again", "GET", {}, Reload});
    page().navigate({"http://site/back", "GET", {}, BackForward});
    page().navigate({"http://site/form", "POST", {}, FormResubmitted});
    page().navigateFrame({"gmsg://load?x=1", "GET", {{"Referer", "http://site/a"}}});
    EXPECT_EQ(heard(), "ask GET http://site/link 0, ask POST http://site/form 1, "
                       "ask GET http://site/again 3, ask GET http://site/back 2, "
                       "ask POST http://site/form 4, ask GET gmsg://load?x=1 5");
    EXPECT_EQ(delegate_.last.valueForHTTPHeaderField("referer"), "http://site/a");
}

TEST_F(UIWebViewTest, EveryAddressOfTheEngineBecomesValid) {
    open("http://site/a");
    const std::pair<const char*, const char*> cases[] = {
        {"gmsg://m?x={\"a\":1}|b%20c&t=Gr\xC3\xBC\xC3\x9F e#f",
         "gmsg://m?x=%7B%22a%22:1%7D%7Cb%20c&t=Gr%C3%BC%C3%9F%20e#f"},
        {"http://site/files/100% Wolf.mp4", "http://site/files/100%25%20Wolf.mp4"},
        {"http://site/?name=50%.mp4&x=%zz%4", "http://site/?name=50%25.mp4&x=%25zz%254"},
        {"http://site/%25%41", "http://site/%25%41"},
    };
    for (const auto& [engine, expected] : cases) {
        page().navigateFrame({engine, "GET", {}});
        EXPECT_EQ(heard(), "ask GET " + std::string(expected) + " 5") << engine;
    }
    EXPECT_EQ(delegate_.last.valueForHTTPHeaderField("User-Agent"), "Scripted/1.0");
}

TEST_F(UIWebViewTest, TheDelegateDecidesWhetherAResponseIsShown) {
    open("http://site/a");
    delegate_.allows = false;
    host::WebResponse response{
        "http://site/100% a b.mp4",
        "video/mp4",
        200,
        {{"Content-Disposition", "attachment; filename=\"a b.mp4\""}, {"Content-Length", "4711"}},
        true,
        "POST"};
    EXPECT_FALSE(page().respond(response));
    ASSERT_EQ(delegate_.answers.size(), 1u);
    const NSURLResponse& answer = delegate_.answers[0];
    EXPECT_EQ(answer.URL().absoluteString(), "http://site/100%25%20a%20b.mp4");
    EXPECT_EQ(answer.MIMEType(), "video/mp4");
    EXPECT_EQ(answer.expectedContentLength(), 4711);
    EXPECT_EQ(answer.suggestedFilename(), "a b.mp4");
    delegate_.allows = true;
    response.headers.emplace_back("Content-Encoding", "gzip");
    EXPECT_TRUE(page().respond(response));
    EXPECT_EQ(delegate_.answers[1].expectedContentLength(), -1);
}

TEST_F(UIWebViewTest, FailuresHaveTheirDomainCodeAndDescription) {
    open("http://site/a");
    page().failLoad({-999, "cancelled", "http://site/a"});
    page().startLoad();
    page().failLoad({102, "interrupted", "http://site/a"});
    EXPECT_EQ(heard(), "fail NSURLErrorDomain -999 cancelled, start, "
                       "fail WebKitErrorDomain 102 interrupted");
    EXPECT_FALSE(view_->isLoading());
}

TEST_F(UIWebViewTest, WithoutADelegateEverythingIsAllowed) {
    for (const bool destroyed : {false, true}) {
        if (destroyed)
            owner_.reset();
        else
            view_->setDelegate({});
        open("http://site/a");
        EXPECT_EQ(view_->delegate(), nullptr);
        EXPECT_TRUE(page().isLoading());
        EXPECT_TRUE(page().respond({"http://site/form", "video/mp4", 200, {}, true, "POST"}));
        page().finishLoad();
        EXPECT_FALSE(view_->isLoading());
        open("http://site/b");
        page().failLoad({102, "interrupted", "http://site/b"});
        EXPECT_FALSE(view_->isLoading());
        view_->setDelegate(owner_);
    }
}

TEST_F(UIWebViewTest, TheViewMayBeDestroyedInEachCallback) {
    delegate_.onAsk = delegate_.onFinish = [this] {
        view_.reset();
    };
    open("http://site/a");
    EXPECT_TRUE(webEngine().pages().empty());
    delegate_.onAsk = {};
    view_ = std::make_shared<UIWebView>();
    view_->setDelegate(owner_);
    open("http://site/b");
    page().finishLoad();
    EXPECT_TRUE(webEngine().pages().empty());
    EXPECT_EQ(heard(), "finish");
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
        EXPECT_EQ(heard().empty(), unavailable);
    }
    ASSERT_EQ(view_->subviews().size(), 1U);
    EXPECT_EQ(view_->subviews()[0]->accessibilityElement().label,
              "A part of Vistrel is not installed.");
}

}
}
