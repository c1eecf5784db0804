#include "tests/support/ScriptedWebEngine.h"

#include "platform/host/EventLoop.h"

#include <utility>

namespace vistrel::support {

ScriptedWebPage::ScriptedWebPage(ScriptedWebEngine& engine, host::WebSession session)
    : engine_(engine)
    , session_(session) {
    engine_.pages_.push_back(this);
}

ScriptedWebPage::~ScriptedWebPage() {
    *alive_ = false;
    std::erase(engine_.pages_, this);
}

void ScriptedWebPage::navigateLater(host::WebNavigation navigation, int position) {
    engine_.loop_.schedule(0, [this, alive = alive_, navigation = std::move(navigation), position] {
        if (*alive)
            navigateTo(navigation, position);
    });
}

bool ScriptedWebPage::navigateTo(const host::WebNavigation& navigation, int position) {
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

void ScriptedWebPage::load(const std::string& url, const host::HeaderFields& headers) {
    calls_.push_back("load " + url);
    navigateLater({url, "GET", headers}, position_ + 1);
}

void ScriptedWebPage::loadHTML(const std::string& html, const std::string& baseURL) {
    calls_.push_back("loadHTML " + baseURL);
    loadedHTML_ = html;
    navigateLater({baseURL, "GET", {}}, position_ + 1);
}

void ScriptedWebPage::showNotice(const std::string& html, const std::string& url) {
    calls_.push_back("showNotice " + url);
    loadedHTML_ = html;
}

void ScriptedWebPage::goInHistory(int steps) {
    const int position = position_ + steps;
    const std::string& target = history_[static_cast<std::size_t>(position)];
    navigateLater({target, "GET", {}, host::WebNavigationType::BackForward}, position);
}

void ScriptedWebPage::goBack() {
    calls_.emplace_back("goBack");
    if (canGoBack())
        goInHistory(-1);
}

void ScriptedWebPage::goForward() {
    calls_.emplace_back("goForward");
    if (canGoForward())
        goInHistory(1);
}

void ScriptedWebPage::reload() {
    calls_.emplace_back("reload");
    if (position_ >= 0)
        navigateLater({url(), "GET", {}, host::WebNavigationType::Reload}, position_);
}

void ScriptedWebPage::stopLoading() {
    calls_.emplace_back("stopLoading");
    loading_ = false;
}

std::string ScriptedWebPage::url() const {
    return position_ < 0 ? std::string() : history_[static_cast<std::size_t>(position_)];
}

void ScriptedWebPage::evaluate(const std::string& script,
                               std::function<void(const std::string&)> done) {
    calls_.push_back("evaluate " + script);
    if (!done)
        return;
    engine_.loop_.schedule(
        0, [alive = alive_, done = std::move(done), result = engine_.scriptResults_[script]] {
            if (*alive)
                done(result);
        });
}

bool ScriptedWebPage::navigate(const host::WebNavigation& navigation) {
    return navigateTo(navigation, position_ + 1);
}

bool ScriptedWebPage::navigateFrame(const host::WebNavigation& navigation) {
    return !client_ || client_->webPageShouldNavigate(navigation);
}

bool ScriptedWebPage::clickLink(const std::string& url) {
    return navigate({url, "GET", {}, host::WebNavigationType::LinkClicked});
}

bool ScriptedWebPage::submitForm(const std::string& url, const std::string& method) {
    return navigate({url, method, {}, host::WebNavigationType::FormSubmitted});
}

bool ScriptedWebPage::respond(const host::WebResponse& response) {
    return !client_ || client_->webPageShouldShowResponse(response);
}

void ScriptedWebPage::challenge(const host::WebChallenge& challenge) {
    if (client_)
        client_->webPageNeedsCredential(
            challenge, [credentials = credentials_](std::optional<host::WebCredential> given) {
                credentials->push_back(given ? given->user + ":" + given->password : "none");
            });
}

void ScriptedWebPage::startLoad() {
    loading_ = true;
    if (client_)
        client_->webPageDidStartLoad();
}

void ScriptedWebPage::finishLoad() {
    loading_ = false;
    if (client_)
        client_->webPageDidFinishLoad();
}

void ScriptedWebPage::failLoad(const host::WebError& error) {
    loading_ = false;
    if (client_)
        client_->webPageDidFailLoad(error);
}

std::shared_ptr<host::WebPage> ScriptedWebEngine::createPage(host::WebSession session) {
    if (unavailable_)
        return nullptr;
    return std::make_shared<ScriptedWebPage>(*this, session);
}

}
