#pragma once
#include "platform/host/WebEngine.h"

#include <map>
#include <vector>

namespace vistrel::host {
class EventLoop;
}

namespace vistrel::support {

class ScriptedWebEngine;

/// A web page without an engine: records what it was told to do, and reports to its client what a
/// test wants. A load asks the client at the next turn; when that allows it the load starts, and
/// the test lets it finish or fail.
class ScriptedWebPage : public host::WebPage {
public:
    ScriptedWebPage(ScriptedWebEngine& engine, host::WebSession session);
    ~ScriptedWebPage() override;
    ScriptedWebPage(const ScriptedWebPage&) = delete;
    ScriptedWebPage& operator=(const ScriptedWebPage&) = delete;

    void setClient(host::WebPageClient* client) override { client_ = client; }
    void load(const std::string& url, const host::HeaderFields& headers) override;
    void loadHTML(const std::string& html, const std::string& baseURL) override;
    void showNotice(const std::string& html, const std::string& url) override;
    void goBack() override;
    void goForward() override;
    void reload() override;
    void stopLoading() override;
    bool canGoBack() const override { return position_ > 0; }
    bool canGoForward() const override { return position_ + 1 < static_cast<int>(history_.size()); }
    std::string url() const override;
    std::string title() const override { return title_; }
    void evaluate(const std::string& script, std::function<void(const std::string&)> done) override;
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
    void setTitle(std::string title) { title_ = std::move(title); }

    /// The page is about to navigate, as after a touch on a link; whether the client lets it, in
    /// which case a main-frame load starts.
    bool navigate(const host::WebNavigation& navigation);
    /// A frame of the page is about to navigate; whether the client lets it. No load is reported.
    bool navigateFrame(const host::WebNavigation& navigation);
    bool clickLink(const std::string& url);
    bool submitForm(const std::string& url, const std::string& method = "POST");
    /// An answer's head has come; whether the client lets it be shown.
    bool respond(const host::WebResponse& response);
    /// A server wants a name and a password; what the client answers is added to credentials().
    void challenge(const host::WebChallenge& challenge);
    /// "user:password", or "none".
    const std::vector<std::string>& credentials() const { return *credentials_; }
    void startLoad();
    void finishLoad();
    void failLoad(const host::WebError& error);

private:
    /// `position` is where the page will stand in the history.
    void navigateLater(host::WebNavigation navigation, int position);
    void goInHistory(int steps);
    bool navigateTo(const host::WebNavigation& navigation, int position);

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
    std::string title_;
    bool loading_ = false;
    double zoom_ = 1;
    bool scalesPageToFit_ = false;
    bool transparent_ = false;
    bool mediaNeedsTouch_ = false;
};

class ScriptedWebEngine : public host::WebEngine {
public:
    explicit ScriptedWebEngine(host::EventLoop& loop)
        : loop_(loop) {}

    std::shared_ptr<host::WebPage> createPage(host::WebSession session) override;
    void warmUp() override {}

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

}
