#pragma once
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
    support::ScriptedWebPage& page() { return *webEngine().page(); }
    /// Address of the download screen on top; empty when another screen is there.
    std::string downloadOnTop() {
        const auto screen = top<FileDownloadViewController>();
        return screen ? screen->downloadRequest().URL()->absoluteString() : "";
    }
    /// Touches a link to a path of the site; whether the engine may load it.
    bool follow(const std::string& path, double seconds = 1) {
        const bool loads = page().clickLink("http://site.example" + path);
        advance(seconds);
        return loads;
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
