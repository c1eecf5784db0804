#include "ads/Interstitial/GADInterstitial.h"

#include "ads/Delegate/GADDelegateManager.h"
#include "ads/Interstitial/GADInterstitialAppController.h"
#include "ads/Notification/GADNotificationCenter.h"
#include "ads/Object/GADObjectPrivate.h"
#include "ads/Object/GADPrivateUtilities.h"
#include "ads/Request/GADRequest.h"
#include "ads/Utility/GADNumberUtilities.h"
#include "ads/View/GADWebView.h"
#include "ads/WebApp/GADWebAppViewController.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/foundation/Weakly.h"
#include "platform/uikit/UIScreen.h"

#include <utility>

namespace vistrel {

namespace {

constexpr const char* kTimeoutKey = "applicationTimeout";
constexpr double kDefaultTimeout = 5;

void settingsDidArrive(const NSNotification& settings) {
    // A bridge address's keys arrive in lower case.
    for (const char* key : {kTimeoutKey, "applicationtimeout"}) {
        const Value* timeout = settings.userInfo.find(key);
        if (timeout && !timeout->string().empty())
            NSUserDefaults::standardUserDefaults().setFloatForKey(
                GADNumberUtilities::floatWithString(timeout->string()), kTimeoutKey);
    }
}

}

std::shared_ptr<GADInterstitial> GADInterstitial::make() {
    std::shared_ptr<GADInterstitial> made(new GADInterstitial);
    made->setUp();
    return made;
}

void GADInterstitial::setUp() {
    NSUserDefaults::standardUserDefaults().registerDefaults(
        Value::Dictionary{{kTimeoutKey, kDefaultTimeout}});
    auto ad = GADObjectPrivate::withFrame(UIScreen::mainScreen().bounds());
    auto& center = GADNotificationCenter::defaultCenter();
    center.addObserver(this, "settings", nullptr, settingsDidArrive);
    center.addObserver(this, kGADDidReceiveWebActionNotification, ad->webView().get(),
                       weakly(ad.get(), [](GADObjectPrivate& self, const NSNotification& action) {
                           const Value* name = action.userInfo.find("a");
                           if (!name || name->string() == "open")
                               self.cancelPendingActions();
                       }));
    GADPrivateUtilities::setPrivateObjectForKey(std::move(ad), this);
}

GADInterstitial::~GADInterstitial() {
    GADNotificationCenter::defaultCenter().removeObserver(this);
    privateObject()->cancelPendingActions();
    GADPrivateUtilities::removePrivateObjectForKey(this);
}

std::shared_ptr<GADObjectPrivate> GADInterstitial::privateObject() const {
    return GADPrivateUtilities::privateObjectForKey<GADObjectPrivate>(this);
}

const std::string& GADInterstitial::adUnitID() const {
    return privateObject()->adUnitID();
}

void GADInterstitial::setAdUnitID(std::string adUnitID) {
    privateObject()->setAdUnitID(std::move(adUnitID));
}

std::shared_ptr<GADDelegateManager> GADInterstitial::delegateManager() const {
    return privateObject()->delegateManager();
}

std::shared_ptr<GADInterstitialDelegate> GADInterstitial::delegate() const {
    return delegateManager()->interstitialDelegate().lock();
}

void GADInterstitial::setDelegate(std::weak_ptr<GADInterstitialDelegate> delegate) {
    delegateManager()->setInterstitialDelegate(std::move(delegate));
    delegateManager()->setInterstitial(weak_from_this());
}

bool GADInterstitial::isReady() const {
    return privateObject()->state() == GADAdState::Shown;
}

void GADInterstitial::loadRequest(const std::shared_ptr<GADRequest>& request) {
    privateObject()->loadInterstitialRequest(request.get());
}

void GADInterstitial::presentFromRootViewController(
    const std::shared_ptr<UIViewController>& controller) {
    const auto ad = privateObject();
    if (!isReady()) {
        NSLog("<GAD> Cannot present interstitial.  It is not ready.");
        return;
    }
    const auto screen = std::make_shared<GADWebAppViewController>();
    screen->setDelegateManager(ad->delegateManager());
    screen->setSupportedOrientations(ad->supportedOrientations());
    screen->setAdController(ad);
    screen->loadHTMLBaseURL(ad->adHTMLString().value_or(""), ad->adHTMLBaseURL());
    ad->trackURLs(ad->pendingTrackingURLs());
    screen->presentFromViewController(controller);
}

void GADInterstitial::loadAndDisplayRequestUsingWindowInitialImage(
    const std::shared_ptr<GADRequest>& request, const std::shared_ptr<UIWindow>& window,
    std::shared_ptr<const UIImage> image) {
    const float timeout = NSUserDefaults::standardUserDefaults().floatForKey(kTimeoutKey);
    if (!(timeout > 0)) {
        NSLog("<GAD> Interstitial has zero timeout.  Not displaying.");
        return;
    }
    const auto controller = GADInterstitialAppController::withWindowImageTimeoutInterstitial(
        window, std::move(image), GADInterstitialAppController::wholeSeconds(timeout),
        shared_from_this());
    delegateManager()->setInterstitial(weak_from_this());
    delegateManager()->setSDKInterstitialDelegate(controller);
    loadRequest(request);
}

}
