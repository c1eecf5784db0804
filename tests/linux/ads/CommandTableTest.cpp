// What every kind of page can do through the bridge with the real page engine, as in the table in
// docs/ads.md.
#include "ads/GADSettings.h"
#include "ads/Notification/GADNotificationCenter.h"
#include "ads/Object/GADObjectPrivate.h"
#include "ads/Object/GADPrivateUtilities.h"
#include "ads/Opener/GADSafetyPolicy.h"
#include "ads/View/GADBannerView.h"
#include "ads/View/GADWebView.h"
#include "ads/ViewController/GADViewController.h"
#include "platform/host/Host.h"
#include "platform/uikit/UIAccessibilityTree.h"
#include "platform/uikit/UITouch.h"
#include "tests/linux/web/ProcessTree.h"
#include "tests/linux/web/RealWindow.h"

#include <csignal>

namespace vistrel {
namespace {

struct Command {
    const char* name;
    const char* url;
};
constexpr Command kCommands[] = {{"`httpTrack`", "gmsg://ads/httpTrack?u=about:x"},
                                 {"`click`", "gmsg://ads/click?u=about:x"},
                                 {"`touch`", "gmsg://ads/touch?tx=1&ty=2&td=0"},
                                 {"`canOpenURLs`", "gmsg://ads/canOpenURLs?urls=tel:1"},
                                 {"`evalInOpener`", "gmsg://ads/evalInOpener?js=1"},
                                 {"`log`", "gmsg://ads/log?string=line"},
                                 {"`settings`", "gmsg://ads/settings"},
                                 {"`open`", "gmsg://ads/open?a=browser&u=http://x.invalid/"},
                                 {"`grokruf://launch`", "grokruf://launch?url=http://x.invalid/"},
                                 {"`vibrate`", "gmsg://ads/vibrate"},
                                 {"any other name", "gmsg://ads/selfdestruct"},
                                 {"`mailto`", "mailto:a@x.invalid"},
                                 {"`tel`", "tel:123"},
                                 {"`close`", "gmsg://ads/close"},
                                 {"`file`", "file:///etc/passwd"},
                                 {"any other scheme", "odd:address"}};

/// Runs a statement for each command, which is in the variables `command` and `number`.
std::string scriptThatSends(const std::string& statement) {
    std::string script = "<script>var list=[";
    for (const auto& command : kCommands)
        script += "'" + std::string(command.url) + "',";
    return script + "],n=0;setTimeout(function(){setInterval(function(){if(n<list.length){" +
           "var command=list[n],number=n;n++;" + statement + "}},50)},700)</script>";
}

struct Caller {
    const char* name;
    std::string page; ///< the ad
    bool isReplaced = false;
    bool opensBrowser = false;
};

std::vector<Caller> callers() {
    const std::string direct = scriptThatSends("location.href=command");
    return {
        {"ad page", direct},
        {"frame", "<iframe srcdoc=\"" + direct + "\"></iframe>"},
        {"sandboxed frame", "<iframe sandbox='allow-scripts' srcdoc=\"" + direct + "\"></iframe>"},
        {"redirect", scriptThatSends("location.href='/redirect/'+number")},
        {"popup", scriptThatSends("window.open(command)")},
        {"stale page", direct, true},
        {"in-ad browser", "<p>Ad</p>", false, true}};
}

class CommandTable : public RealWindow {
protected:
    void SetUp() override {
        RealWindow::SetUp();
        const std::string origin = server_.url("");
        overrideGADSetting(kGADAdServerOrigin, origin);
        overrideGADSetting(kGADStaticContentHost, origin.substr(std::string("http://").size()));
        server_.serve(
            "/afma/sdk-core-v40.js",
            {.type = "text/javascript",
             .body = "function AFMA_buildAdURL(){location.href='gmsg://ads/loadAdURL?url='+"
                     "encodeURIComponent('" +
                     server_.url("/ad") + "')}"});
        for (std::size_t i = 0; i < std::size(kCommands); ++i)
            server_.redirect("/redirect/" + std::to_string(i), kCommands[i].url);
        host::current().log = [this](const std::string& line) {
            if (!line.starts_with("<GAD> Refused"))
                return;
            for (const auto& command : kCommands) // a click is refused before it is heard of
                if (line.find(command.url) != std::string::npos)
                    last_ = command.name;
            outcomes_[last_] = "refused";
        };
        GADNotificationCenter::defaultCenter().addObserver(
            this, kGADDidReceiveWebActionNotification, nullptr,
            [this](const NSNotification& action) {
                for (const auto& command : kCommands)
                    if (action.userInfo.find("u")->string() == command.url)
                        outcomes_[last_ = command.name] = "done";
            });
        policy_.touchLifetime = 60;
        GADSafetyPolicy::setShared(policy_);
        UIApplication::sharedApplication().setState(UIApplicationState::Active);
    }

    void TearDown() override {
        GADNotificationCenter::defaultCenter().removeObserver(this);
        banner_.reset();
        GADSafetyPolicy::setShared(std::nullopt);
        GADObjectPrivate::resetProcessState();
        overrideGADSetting(kGADStaticContentHost, "");
        overrideGADSetting(kGADAdServerOrigin, "");
        RealWindow::TearDown();
    }

    void loadBanner(const std::string& page) {
        server_.servePage("/ad", page);
        if (!banner_) {
            banner_ = GADBannerView::withFrame(CGRectMake(0, 366, 320, 50));
            navigation_->topViewController()->view()->addSubview(banner_);
        }
        banner_->setRootViewController(navigation_->topViewController());
        banner_->loadRequest(nullptr);
        ASSERT_TRUE(turnUntil([&] { return !banner_->webView()->isHidden() && isShown(); }, 10));
    }
    bool isShown() {
        return GADPrivateUtilities::privateObjectForKey<GADObjectPrivate>(banner_.get())->state() ==
               GADAdState::Shown;
    }
    /// Has the ad open a screen over itself, after a touch.
    void openOverAd(const std::string& screen, const std::string& path) {
        turnFor(0.3);
        touch();
        banner_->webView()->stringByEvaluatingJavaScriptFromString(
            "location.href='gmsg://ads/open?a=" + screen + "&u=" + server_.url(path) + "'",
            [](const std::string&) {});
        ASSERT_TRUE(turnUntil([&] { return navigation_->modalViewController() != nullptr; }));
    }
    void removeBanner() {
        banner_->removeFromSuperview();
        banner_.reset();
        turnFor(0.1);
    }
    static void press(const std::string& label) {
        for (const auto& node : accessibilityTree(UIApplication::sharedApplication().screenView()))
            if (node.element.label == label)
                return node.view->accessibilityActivate();
        FAIL() << "there is no " << label;
    }
    void touch() { (void)banner_->webView()->touchWillBeginInside(UITouch{}); }

    /// Each command's outcome; commands without one were not received.
    std::map<std::string, std::string> outcomesOf(const Caller& caller, bool touched) {
        loadBanner(caller.page);
        if (caller.opensBrowser) {
            server_.servePage("/browsed", scriptThatSends("location.href=command"));
            openOverAd("browser", "/browsed");
        } else {
            turnFor(0.3);
            if (touched)
                touch();
            // Screens that commands open would cover the page.
            banner_->setRootViewController({});
        }
        if (caller.isReplaced) {
            loadBanner("<p>Next</p>");
            outcomes_.clear();
        }
        // A page whose first command arrives can send all of them.
        if (turnUntil([&] { return !outcomes_.empty(); }, 2))
            turnUntil([&] { return outcomes_.contains(std::rbegin(kCommands)->name); }, 6);
        turnFor(0.1);
        while (const auto screen = std::dynamic_pointer_cast<GADViewController>(
                   navigation_->modalViewController())) {
            screen->relinquishScreen();
            turnUntil([&] { return navigation_->modalViewController() != screen; }, 3);
        }
        removeBanner();
        return std::exchange(outcomes_, {});
    }

    GADSafetyPolicy policy_;
    std::shared_ptr<GADBannerView> banner_;
    std::map<std::string, std::string> outcomes_;
    std::string last_;
};

TEST_F(CommandTable, IsAsDocumented) {
    std::vector<std::string> lines{"| Command |", "|---|"};
    for (const auto& command : kCommands)
        lines.push_back("| " + std::string(command.name) + " |");
    for (const Caller& caller : callers()) {
        SCOPED_TRACE(caller.name);
        const auto untouched = outcomesOf(caller, false);
        const auto touched = outcomesOf(caller, true);
        lines[0] += " " + std::string(caller.name) + " |";
        lines[1] += "---|";
        for (std::size_t i = 0; i < std::size(kCommands); ++i) {
            const auto outcome = [&](const std::map<std::string, std::string>& outcomes) {
                const auto found = outcomes.find(kCommands[i].name);
                return found == outcomes.end() ? std::string("—") : found->second;
            };
            const std::string before = outcome(untouched);
            const std::string after = outcome(touched);
            lines[i + 2] += " " + before + (before == after ? "" : " / " + after) + " |";
        }
    }
    std::string table;
    for (const auto& line : lines)
        table += line + "\n";
    EXPECT_THAT(support::contentsOf(SOURCE_FOLDER "/docs/ads.md"), HasSubstr(table));
}

TEST_F(CommandTable, ThereIsAWayOutOfAPageThatHangsOrHasCrashed) {
    server_.servePage("/plain", "<p>Plain</p>");
    server_.servePage("/hangs", "<script>setTimeout(function(){while(true){}},300)</script>");
    for (const auto& [screen, button] : {std::pair{"browser", "Done"}, {"webapp", "Close"}}) {
        for (const char* path : {"/hangs", "/plain"}) {
            SCOPED_TRACE(std::string(screen) + path);
            loadBanner("<p>Ad</p>");
            openOverAd(screen, path);
            turnFor(1.5);
            if (std::string(path) == "/plain")
                for (const int process : descendantsNamed("WebKitWebProces"))
                    ::kill(process, SIGKILL);
            turnFor(0.3);
            press(button);
            EXPECT_TRUE(turnUntil([&] { return !navigation_->modalViewController(); }, 3));
            removeBanner();
        }
    }
}

}
}
