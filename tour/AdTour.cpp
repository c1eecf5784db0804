#include "tour/AdTour.h"

#include "ads/Browser/GADBrowserController.h"
#include "ads/Delegate/GADWebViewDelegate.h"
#include "ads/GADSettings.h"
#include "ads/Interstitial/GADInterstitial.h"
#include "ads/Request/GADRequest.h"
#include "ads/View/GADBannerView.h"
#include "ads/View/GADWebView.h"
#include "ads/WebApp/GADWebAppViewController.h"
#include "platform/foundation/NSRunLoop.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIWindow.h"
#include "shell/RootViewController.h"
#include "tour/TourHands.h"
#include "tour/TourStage.h"

namespace vistrel {

namespace {

using Role = UIAccessibilityRole;

constexpr double kTapSeconds = 0.3;
constexpr double kSettle = 0.8;

std::shared_ptr<GADBannerView> banner() {
    const auto menu = std::dynamic_pointer_cast<RootViewController>(
        TourStage::navigation().viewControllers().front());
    return menu ? menu->bannerView() : nullptr;
}

/// The ad screen in front, or null.
std::shared_ptr<UIViewController> frontScreen() {
    auto screen = TourStage::navigation().modalViewController();
    while (screen && screen->modalViewController())
        screen = screen->modalViewController();
    return screen;
}

std::shared_ptr<GADWebView> frontPage() {
    if (const auto browser = std::dynamic_pointer_cast<GADBrowserController>(frontScreen()))
        return browser->webView();
    const auto webApp = std::dynamic_pointer_cast<GADWebAppViewController>(frontScreen());
    return webApp ? webApp->webView() : nullptr;
}

/// A touch on the page, and the click that the engine would generate for it.
void touchLink(const std::shared_ptr<GADWebView>& page, const char* selector) {
    const CGRect bounds = page->bounds();
    TourHands::tap(page->convertPointToView({bounds.midX(), bounds.midY()}, nullptr));
    NSRunLoop::performAfterDelay(kTapSeconds, [page, selector] {
        page->stringByEvaluatingJavaScriptFromString(std::string("document.querySelector('") +
                                                     selector + "').click()");
    });
}

bool isButtonEnabled(const char* label) {
    const auto button = TourHands::find(Role::Button, label);
    return button && button->element.enabled;
}

bool isMenuBack() {
    return !frontScreen() && TourStage::isMenuOnTop() &&
           !UIApplication::sharedApplication().isStatusBarHidden();
}

bool hasFrontPageLoaded() {
    const auto page = frontPage();
    const auto delegate =
        page ? std::dynamic_pointer_cast<GADWebViewDelegate>(page->delegate()) : nullptr;
    // Before its load begins, a page has an address but is not loading.
    return delegate && delegate->hasLoadedAtLeastOnce() && !page->isLoading();
}

std::function<void()> tapOn(const char* button) {
    return [button] {
        TourHands::tap(Role::Button, button);
    };
}

void addStep(std::vector<TourStep>& steps, const char* name, const char* says,
             std::function<void()> act, std::function<bool()> holds) {
    steps.push_back({name, says, std::move(act), std::move(holds), {}, 20, kSettle});
}

void addBrowser(std::vector<TourStep>& steps) {
    addStep(
        steps, "ad-banner", "the banner has arrived", {},
        [] { return banner() && !banner()->webView()->isHidden(); });
    addStep(
        steps, "ad-browser", "a touch opens its page in the ad's browser",
        [] { touchLink(banner()->webView(), "#ad"); },
        [] { return hasFrontPageLoaded() && isButtonEnabled("Reload"); });
    addStep(
        steps, "ad-browser-next", "a link on; Back is enabled",
        [] { touchLink(frontPage(), "a.go"); }, [] { return isButtonEnabled("Back"); });
    addStep(steps, "ad-browser-back", "Back; Forward is enabled", tapOn("Back"),
            [] { return isButtonEnabled("Forward") && isButtonEnabled("Reload"); });
    addStep(steps, "ad-browser-done", "Done; the menu and the status bar are back", tapOn("Done"),
            isMenuBack);
}

void loadAd(const char* name) {
    const auto request = GADRequest::request();
    request->setAdditionalParameters(
        std::make_shared<const Value::Dictionary>(Value::Dictionary{{"ad", name}}));
    banner()->loadRequest(request);
}

bool hasAdLoaded(const char* name) {
    const auto page = banner()->webView();
    return page->URLString().find(std::string("ad=") + name) != std::string::npos &&
           !page->isLoading();
}

void addWebApp(std::vector<TourStep>& steps) {
    addStep(
        steps, "ad-with-clicks", "an ad whose clicks are counted", [] { loadAd("clicks"); },
        [] { return hasAdLoaded("clicks"); });
    addStep(
        steps, "ad-web-app", "it opens as a web app", [] { touchLink(banner()->webView(), "#ad"); },
        [] { return hasFrontPageLoaded() && TourHands::find(Role::Button, "Close"); });
    addStep(
        steps, "ad-web-app-browser", "the web app opens a browser",
        [] { touchLink(frontPage(), "a.go"); },
        [] { return hasFrontPageLoaded() && isButtonEnabled("Reload"); });
    addStep(steps, "ad-web-app-again", "Done returns to the web app", tapOn("Done"), [] {
        return std::dynamic_pointer_cast<GADWebAppViewController>(frontScreen()) &&
               TourHands::find(Role::Button, "Close");
    });
    addStep(steps, "ad-web-app-closed", "its button closes it", tapOn("Close"), isMenuBack);
}

/// The application provides the way out, whatever the page does.
void addWayOut(std::vector<TourStep>& steps, const char* name, const char* says) {
    addStep(
        steps, name, says, [name] { loadAd(name); }, [name] { return hasAdLoaded(name); });
    addStep(
        steps, "ad-misbehaves", "it fills the screen",
        [] { touchLink(banner()->webView(), "#ad"); },
        [] {
            return isButtonEnabled("Close") && frontPage() && !frontPage()->URLString().empty();
        });
    addStep(steps, "ad-misbehaves-closed", "and is closed", tapOn("Close"), isMenuBack);
}

std::shared_ptr<GADInterstitial> interstitialOfUnit(const char* unit) {
    auto ad = GADInterstitial::make();
    ad->setAdUnitID(unit);
    return ad;
}

/// The window as at the application's start.
void displayAtStart(const char* unit, float timeout) {
    const auto ad = interstitialOfUnit(unit);
    NSUserDefaults::standardUserDefaults().setFloatForKey(timeout, "applicationTimeout");
    const auto window = UIApplication::sharedApplication().keyWindow()->shared_from_this();
    ad->loadAndDisplayRequestUsingWindowInitialImage(
        nullptr, std::static_pointer_cast<UIWindow>(window), UIImage::imageNamed("Default.png"));
}

bool isCovered() {
    return TourStage::navigation().view()->window() == nullptr;
}

void addInterstitials(std::vector<TourStep>& steps) {
    const auto ad = std::make_shared<std::shared_ptr<GADInterstitial>>();
    addStep(
        steps, "interstitial", "an interstitial over the menu",
        [ad] {
            *ad = interstitialOfUnit("shop-screen");
            (*ad)->loadRequest(nullptr);
        },
        [ad] {
            if ((*ad)->isReady() && !frontScreen())
                (*ad)->presentFromRootViewController(TourStage::navigation().topViewController());
            return hasFrontPageLoaded() && TourHands::find(Role::Button, "Close");
        });
    addStep(
        steps, "interstitial-closed", "closed",
        [ad] {
            TourHands::tap(Role::Button, "Close");
            ad->reset();
        },
        isMenuBack);
    addStep(
        steps, "start-interstitial", "a start-up interstitial in time",
        [] { displayAtStart("film-screen", 10); },
        [] { return isCovered() && TourHands::find(Role::Button, "Close"); });
    addStep(
        steps, "start-interstitial-closed", "closed; the application's views are back",
        tapOn("Close"), [] { return !isCovered() && isMenuBack(); });
    addStep(
        steps, "start-interstitial-fails", "one that fails gives way at once",
        [] { displayAtStart("unavailable", 10); }, [] { return !isCovered() && isMenuBack(); });
    addStep(
        steps, "start-interstitial-waits", "the launch picture waits for a slow one",
        [] { displayAtStart("slow", 3); }, isCovered);
    addStep(steps, "start-interstitial-late", "for three seconds", {},
            [] { return !isCovered() && isMenuBack(); });
}

}

std::vector<TourStep> adTour() {
    std::vector<TourStep> steps;
    if (gadSettingValue(kGADStaticContentHost).empty() || gadSettingValue(kGADEnabled) == "no")
        return steps;
    addBrowser(steps);
    addWebApp(steps);
    addWayOut(steps, "hangs", "an ad whose page never finishes loading");
    addWayOut(steps, "endless", "an ad whose script never ends");
    addInterstitials(steps);
    return steps;
}

}
