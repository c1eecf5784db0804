#pragma once
#include "platform/host/EventLoop.h"
#include "platform/host/WebEngine.h"
#include "tests/support/Testing.h"

namespace vistrel::support {

class ScriptedWebPage;

/// Creates scripted pages.
class ScriptedWebEngine : public host::WebEngine {
public:
    explicit ScriptedWebEngine(host::EventLoop& loop)
        : loop_(loop) {}

    std::shared_ptr<host::WebPage> createPage(host::WebSession session) override;
    void warmUp() override { isWarm = true; }
    bool isWarm = false;

    /// The pages that are alive, oldest first.
    const std::vector<ScriptedWebPage*>& pages() const { return pages_; }
    /// The newest one; null when there is none.
    ScriptedWebPage* page() const { return pages_.empty() ? nullptr : pages_.back(); }
    void setUnavailable(bool unavailable) { unavailable_ = unavailable; }
    /// What evaluating the script yields; other scripts yield nothing.
    void setScriptResult(const std::string& script, std::string result) {
        scriptResults_.insert_or_assign(script, std::move(result));
    }

private:
    friend class ScriptedWebPage;

    host::EventLoop& loop_;
    std::vector<ScriptedWebPage*> pages_;
    std::map<std::string, std::string> scriptResults_;
    bool unavailable_ = false;
};

/// A web page without an engine: records what it was told to do, and reports to its client what a
/// test wants. A load asks the client at the next turn; when that allows it the load starts, and
/// the test lets it finish or fail.
class ScriptedWebPage : public host::WebPage {
public:
    ScriptedWebPage(ScriptedWebEngine& engine, host::WebSession session)
        : engine_(engine)
        , session_(session) {
        engine_.pages_.push_back(this);
    }
    ~ScriptedWebPage() override {
        *alive_ = false;
        std::erase(engine_.pages_, this);
    }
    ScriptedWebPage(const ScriptedWebPage&) = delete;
    ScriptedWebPage& operator=(const ScriptedWebPage&) = delete;

    void setClient(host::WebPageClient* client) override { client_ = client; }
    void load(const std::string& url, const host::HeaderFields& headers) override {
        calls_.push_back("load " + url);
        navigateLater({url, "GET", headers}, position_ + 1);
    }
    void loadHTML(const std::string& html, const std::string& baseURL) override {
        calls_.push_back("loadHTML " + baseURL);
        loadedHTML_ = html;
        navigateLater({baseURL, "GET", {}}, position_ + 1);
    }
    void showNotice(const std::string& html, const std::string& url) override {
        calls_.push_back("showNotice " + url);
        loadedHTML_ = html;
    }
    void goBack() override { goInHistory("goBack", -1); }
    void goForward() override { goInHistory("goForward", 1); }
    void reload() override {
        calls_.emplace_back("reload");
        if (position_ >= 0)
            navigateLater({url(), "GET", {}, host::WebNavigationType::Reload}, position_);
    }
    void stopLoading() override {
        calls_.emplace_back("stopLoading");
        loading_ = false;
    }
    bool canGoBack() const override { return position_ > 0; }
    bool canGoForward() const override { return position_ + 1 < static_cast<int>(history_.size()); }
    std::string url() const override {
        return position_ < 0 ? std::string() : history_[static_cast<std::size_t>(position_)];
    }
    std::string title() const override { return {}; }
    void evaluate(const std::string& script,
                  std::function<void(const std::string&)> done) override {
        calls_.push_back("evaluate " + script);
        if (!done)
            return;
        engine_.loop_.schedule(
            0, [alive = alive_, done = std::move(done), result = engine_.scriptResults_[script]] {
                if (*alive)
                    done(result);
            });
    }
    void setScalesPageToFit(bool scales) override { scalesPageToFit_ = scales; }
    void setZoom(double zoom) override { zoom_ = zoom; }
    void setTransparentBackground(bool transparent) override { transparent_ = transparent; }
    void setMediaPlaybackRequiresUserAction(bool needed) override { mediaNeedsTouch_ = needed; }
    std::string userAgent() const override { return "Scripted/1.0"; }

    /// What was asked of the page, in order: "load http://…", "loadHTML http://base",
    /// "showNotice http://…", "goBack", "goForward", "reload", "stopLoading", "evaluate …".
    const std::vector<std::string>& calls() const { return calls_; }
    /// The last page or notice.
    const std::string& loadedHTML() const { return loadedHTML_; }
    bool isLoading() const { return loading_; }
    bool scalesPageToFit() const { return scalesPageToFit_; }
    double zoom() const { return zoom_; }
    bool hasTransparentBackground() const { return transparent_; }
    bool mediaNeedsTouch() const { return mediaNeedsTouch_; }
    host::WebSession session() const { return session_; }

    /// The page is about to navigate, as after a touch on a link; whether the client lets it, in
    /// which case a main-frame load starts.
    bool navigate(const host::WebNavigation& navigation) {
        return navigateTo(navigation, position_ + 1);
    }
    /// A frame of the page is about to navigate; whether the client lets it. No load is reported.
    bool navigateFrame(const host::WebNavigation& navigation) {
        return !client_ || client_->webPageShouldNavigate(navigation);
    }
    bool clickLink(const std::string& url) {
        return navigate({url, "GET", {}, host::WebNavigationType::LinkClicked});
    }
    bool submitForm(const std::string& url, const std::string& method = "POST") {
        return navigate({url, method, {}, host::WebNavigationType::FormSubmitted});
    }
    /// An answer's head has come; whether the client lets it be shown.
    bool respond(const host::WebResponse& response) {
        return !client_ || client_->webPageShouldShowResponse(response);
    }
    /// A server wants a name and a password; what the client answers is added to credentials().
    void challenge(const host::WebChallenge& challenge) {
        if (client_)
            client_->webPageNeedsCredential(
                challenge, [credentials = credentials_](std::optional<host::WebCredential> given) {
                    credentials->push_back(given ? given->user + ":" + given->password : "none");
                });
    }
    /// "user:password", or "none".
    const std::vector<std::string>& credentials() const { return *credentials_; }
    void startLoad() {
        loading_ = true;
        if (client_)
            client_->webPageDidStartLoad();
    }
    void finishLoad() {
        loading_ = false;
        if (client_)
            client_->webPageDidFinishLoad();
    }
    void failLoad(const host::WebError& error) {
        loading_ = false;
        if (client_)
            client_->webPageDidFailLoad(error);
    }

private:
    /// `position` is where the page will stand in the history.
    void navigateLater(host::WebNavigation navigation, int position) {
        engine_.loop_.schedule(
            0, [this, alive = alive_, navigation = std::move(navigation), position] {
                if (*alive)
                    navigateTo(navigation, position);
            });
    }
    void goInHistory(const char* call, int steps) {
        calls_.emplace_back(call);
        const int position = position_ + steps;
        if (position < 0 || position >= static_cast<int>(history_.size()))
            return;
        const std::string& target = history_[static_cast<std::size_t>(position)];
        navigateLater({target, "GET", {}, host::WebNavigationType::BackForward}, position);
    }
    bool navigateTo(const host::WebNavigation& navigation, int position) {
        const auto alive = alive_;
        const bool allowed = !client_ || client_->webPageShouldNavigate(navigation);
        if (!allowed || !*alive)
            return false;
        const auto index = static_cast<std::size_t>(position);
        if (index == history_.size() || navigation.url != history_[index]) {
            history_.resize(index);
            history_.push_back(navigation.url);
        }
        position_ = position;
        startLoad();
        return true;
    }

    ScriptedWebEngine& engine_;
    host::WebSession session_;
    host::WebPageClient* client_ = nullptr;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
    std::shared_ptr<std::vector<std::string>> credentials_ =
        std::make_shared<std::vector<std::string>>();
    std::vector<std::string> calls_;
    std::string loadedHTML_;
    std::vector<std::string> history_;
    int position_ = -1;
    bool loading_ = false;
    double zoom_ = 1;
    bool scalesPageToFit_ = false;
    bool transparent_ = false;
    bool mediaNeedsTouch_ = false;
};

inline std::shared_ptr<host::WebPage> ScriptedWebEngine::createPage(host::WebSession session) {
    if (unavailable_)
        return nullptr;
    return std::make_shared<ScriptedWebPage>(*this, session);
}

}
