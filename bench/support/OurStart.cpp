#include "ads/GADServer.h"
#include "platform/foundation/NSRunLoop.h"
#include "platform/foundation/NSURL.h"
#include "platform/host/Display.h"
#include "platform/host/EventLoop.h"
#include "platform/host/Host.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIApplicationDelegate.h"
#include "platform/uikit/UIApplicationMain.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIWebView.h"
#include "settings/Settings.h"
#include "shell/MainInterface.h"
#include "shell/VistrelAppDelegate.h"
#include "web/WebBrowserViewController.h"

#include <cstdio>
#include <ctime>
#include <memory>
#include <string>
#include <utility>

namespace vistrel {

namespace {

void say(const char* what) {
    std::puts(what);
    std::fflush(stdout);
}

UINavigationController& navigation() {
    auto* delegate =
        dynamic_cast<VistrelAppDelegate*>(UIApplication::sharedApplication().delegate());
    return *delegate->navigationController();
}

/// Reports when a frame after that one has been drawn.
void sayAfterFrame(unsigned frame) {
    if (host::current().display->framesDrawn() != frame)
        say("shown");
    else
        NSRunLoop::performAfterDelay(
            0.001, [frame] { sayAfterFrame(frame); });
}

/// Reports when the page has been painted after its load.
class Watch : public UIWebViewDelegate {
public:
    explicit Watch(std::shared_ptr<WebBrowserViewController> browser)
        : browser_(std::move(browser)) {}
    bool webViewShouldStartLoadWithRequest(UIWebView& webView, const NSURLRequest& request,
                                           UIWebViewNavigationType type) override {
        return browser_->webViewShouldStartLoadWithRequest(webView, request, type);
    }
    void webViewDidStartLoad(UIWebView& webView) override {
        browser_->webViewDidStartLoad(webView);
    }
    void webViewDidFinishLoad(UIWebView& webView) override {
        browser_->webViewDidFinishLoad(webView);
        host::Display& display = *host::current().display;
        display.requestFrame();
        sayAfterFrame(display.framesDrawn());
    }

private:
    std::shared_ptr<WebBrowserViewController> browser_;
};

void openPage(const std::string& url) {
    const auto browser = WebBrowserViewController::withTitleURL("Page", url);
    navigation().pushViewController(browser, true);
    static const auto watch = std::make_shared<Watch>(browser);
    browser->webView()->setDelegate(watch);
}

/// How many frames the menu draws once it has been idle for `settling` seconds.
void countIdleFrames(double settling) {
    // The status bar's clock draws a frame when the minute changes: avoid that.
    const auto second = static_cast<double>(std::time(nullptr) % 60);
    const bool isEarly = second + settling + 5 < 59;
    NSRunLoop::performAfterDelay(isEarly ? settling : 60 - second + settling, [] {
        const unsigned before = host::current().display->framesDrawn();
        NSRunLoop::performAfterDelay(5, [before] {
            std::printf("idle %u\n", host::current().display->framesDrawn() - before);
            say("shown");
        });
    });
}

}
}

/// The real application: reports when its menu is on screen, then opens a page or idles.
/// Arguments: "menu", "idle" or "page"; the device root; the page's address or, for the other two,
/// the ad server's if there is to be a banner.
int main(int argc, char* argv[]) {
    using namespace vistrel;
    const std::string mode = argv[1];
    UILaunchOptions options;
    options.deviceRoot = argv[2];
    options.scale = 2;
    const bool hasBanner = mode != "page" && argc > 3;
    if (hasBanner)
        useGADServer(*NSURL::URLWithString(argv[3]));
    options.didLaunch = [&mode, hasBanner, argv] {
        if (mode == "menu")
            say("shown");
        else if (mode == "idle")
            countIdleFrames(hasBanner ? 8 : 2);
        else
            openPage(argv[3]);
    };
    return UIApplicationMain(argc, argv, options, makeMainInterface);
}
