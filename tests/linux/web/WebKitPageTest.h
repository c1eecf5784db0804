#pragma once
#include "platform/linux/modules/DeferredWebEngine.h"
#include "platform/linux/window/GtkForeignContent.h"
#include "tests/linux/MainLoop.h"
#include "tests/linux/TestCookieJar.h"
#include "tests/linux/web/TestPageServer.h"
#include "tests/support/TemporaryFolder.h"

#include <gtk/gtk.h>
#include <webkit/webkit.h>

namespace vistrel {

/// Records what a page tells its client, and answers as a test wants.
struct Recorder : host::WebPageClient {
    bool webPageShouldNavigate(const host::WebNavigation& navigation) override {
        navigations.push_back(navigation);
        if (onNavigation)
            onNavigation(navigation);
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
    void webPageDidStartLoad() override {
        ++started;
        if (onStart)
            onStart();
    }
    void webPageDidFinishLoad() override { ++finished; }
    void webPageDidFailLoad(const host::WebError& error) override { failures.push_back(error); }

    std::vector<std::string> asked() const {
        std::vector<std::string> urls;
        for (const auto& navigation : navigations)
            urls.push_back(navigation.url);
        return urls;
    }
    bool wasAsked(const std::string& url) const { return std::ranges::count(asked(), url) > 0; }

    std::optional<std::string> refuse;
    std::optional<std::string> refuseResponse;
    std::vector<host::WebNavigation> navigations;
    std::vector<host::WebResponse> responses;
    std::vector<host::WebChallenge> challenges;
    std::optional<host::WebCredential> credential;
    std::optional<host::WebCredential> rightCredential;
    std::function<void(const host::WebNavigation&)> onNavigation;
    std::function<void()> onStart;
    int started = 0;
    int finished = 0;
    std::vector<host::WebError> failures;
};

/// A page of the real engine in a real window, with a server on loopback.
class WebKitPageTest : public testing::Test {
protected:
    static void SetUpTestSuite() { ASSERT_TRUE(gtk_init_check()) << "no display"; }

    void SetUp() override {
        makeEngine();
        makePage();
    }
    void TearDown() override { closePage(); }

    void makeEngine() {
        WebEngineSetup setup;
        setup.dataDirectory = folder_.path("data");
        setup.cacheDirectory = folder_.path("cache");
        setup.cookieJar = [this] {
            return jar_.get();
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

    /// Whether a load ends after the action.
    bool loadsAfter(const std::function<void()>& action) {
        const int before = client_.finished;
        action();
        return turnUntil([&] { return client_.finished > before; });
    }
    bool load(const std::string& path) {
        return loadsAfter([&] { page_->load(server_.url(path), {}); });
    }
    /// Serves a page as "/page" and loads it.
    bool loadPage(const std::string& html) {
        server_.servePage("/page", html);
        return load("/page");
    }
    /// Loads a page whose load fails; false when it does not.
    bool failsToLoad(const std::string& url) {
        const std::size_t before = client_.failures.size();
        page_->load(url, {});
        return turnUntil([&] { return client_.failures.size() > before; });
    }
    WebKitWebView* view() const {
        return WEBKIT_WEB_VIEW(dynamic_cast<GtkForeignContent*>(page_.get())->widget());
    }

    std::string evaluate(const std::string& script) {
        std::optional<std::string> answer;
        page_->evaluate(script, [&](const std::string& text) { answer = text; });
        turnUntil([&] { return answer.has_value(); });
        return answer.value_or("(no answer)");
    }

    void click(const std::string& id) { evaluate("document.getElementById('" + id + "').click()"); }

    std::string jarValue(const std::string& name) const {
        return jar_.value(server_.url("/"), name);
    }

    TestPageServer server_;
    TestCookieJar jar_;
    support::TemporaryFolder folder_;
    std::string log_;
    Recorder client_;
    std::unique_ptr<DeferredWebEngine> engine_;
    std::shared_ptr<host::WebPage> page_;
    host::WebSession session_ = host::WebSession::Browsing;
    GtkWidget* window_ = nullptr;
};

}
