#pragma once
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIKey.h"
#include "tests/support/ui/ScreenTest.h"
#include "web/FileDownloadViewController.h"
#include "web/WebBrowserViewController.h"

namespace vistrel {

inline constexpr const char* kStart = "http://site.example/music/";

/// A browser on the scripted page engine and network.
class WebBrowserTest : public support::ScreenTest {
protected:
    std::shared_ptr<WebBrowserViewController> open(const std::string& address) {
        auto browser = WebBrowserViewController::withTitleURL("Music", address);
        push(browser);
        return browser;
    }
    /// On an ordinary page that has been loaded.
    std::shared_ptr<WebBrowserViewController> openPage() {
        network().at(kStart).type("text/html").body("<p>page");
        auto browser = open(kStart);
        advance(1);
        page().finishLoad();
        advance(1);
        return browser;
    }
    void backToRoot() {
        navigation().popToRootViewControllerAnimated(false);
        settle();
    }
    /// What the site answers for a path. There is a film unless the test says otherwise.
    support::ScriptedAnswer& site(const std::string& path) {
        return network().at("http://site.example" + path).type("video/mp4").body("x");
    }
    void setManners(bool careful) {
        deterministicHost().settings["manners/careful"] = careful ? "yes" : "no";
    }
    support::ScriptedWebPage& page() { return *webEngine().page(); }
    std::shared_ptr<FileDownloadViewController> downloadOnTop() {
        return std::dynamic_pointer_cast<FileDownloadViewController>(
            navigation().topViewController());
    }
    /// A navigation of the page, as after a script or a redirect.
    bool navigate(const std::string& url) {
        return page().navigateFrame({.url = url, .headers = {}});
    }
    /// The head of the engine's own answer; whether the engine may show it.
    bool respond(const std::string& url, const std::string& type,
                 const std::string& method = "GET") {
        return page().respond({url, type, 200, {}, true, method});
    }
    void sendKey(const std::string& text) { send({UIKeyCode::Character, text}); }
    void sendKey(UIKeyCode code) { send({code, {}}); }
    static void send(const UIKey& key) { UIApplication::sharedApplication().events().sendKey(key); }
    std::size_t screens() { return navigation().viewControllers().size(); }
    int countOfRequests(const std::string& url) {
        const auto urls = network().requestedURLs();
        return static_cast<int>(std::count(urls.begin(), urls.end(), url));
    }
    int countOfCalls(const std::string& call) {
        const auto& calls = page().calls();
        return static_cast<int>(std::count(calls.begin(), calls.end(), call));
    }
};

}
