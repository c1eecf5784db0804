#include "ads/ViewController/GADViewController.h"

#include "ads/Delegate/GADDelegateManager.h"
#include "ads/Delegate/GADWebViewDelegate.h"
#include "ads/Notification/GADNotificationCenter.h"
#include "ads/Object/GADPrivateUtilities.h"
#include "ads/Request/GADRequest.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/Utility/GADAutorelease.h"
#include "ads/View/GADWebView.h"
#include "ads/ViewController/GADViewControllerPrivate.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSRunLoop.h"
#include "platform/foundation/Weakly.h"
#include "platform/uikit/UIApplication.h"

#include <utility>

namespace vistrel {

namespace {

/// A presentation has ended by then, even if the host does not forward the screens' calls.
constexpr double kSecondsUntilAppeared = 0.6;

}

GADViewController::GADViewController()
    : GADViewController(std::make_shared<GADViewControllerPrivate>()) {}

GADViewController::GADViewController(std::shared_ptr<GADViewControllerPrivate> privateObject) {
    GADPrivateUtilities::setPrivateObjectForKey(std::move(privateObject), this);
}

GADViewController::~GADViewController() {
    GADNotificationCenter::defaultCenter().removeObserver(this);
    if (isFirstGADViewController())
        delegateManager()->didDismissScreen();
    GADPrivateUtilities::removePrivateObjectForKey(this);
}

std::shared_ptr<GADViewControllerPrivate> GADViewController::privateObject() const {
    return GADPrivateUtilities::privateObjectForKey<GADViewControllerPrivate>(this);
}

void GADViewController::viewDidLoad() {
    UIViewController::viewDidLoad();
    view()->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    view()->setOpaque(true);
    view()->setBackgroundColor(UIColor::blackColor());
    view()->setClipsToBounds(true);
    auto& center = GADNotificationCenter::defaultCenter();
    center.addObserver(this, "settings", view().get(),
                       weakly(
                           this,
                           [](GADViewController& self, const NSNotification& settings) {
                               const Value* wanted =
                                   settings.userInfo.find("supportedorientations");
                               self.setSupportedOrientations(
                                   orientationFromString(wanted ? wanted->string() : ""));
                           }));
    center.addObserver(this, UIApplicationDidChangeStatusBarOrientationNotification, nullptr,
                       weakly(this, [](GADViewController& self, const NSNotification&) {
                           if (const auto webView = self.rotatingWebView())
                               GADWebViewDelegate::notifyWebViewOfOrientationChange(
                                   *webView,
                                   UIApplication::sharedApplication().statusBarOrientation());
                       }));
}

bool GADViewController::presentFromViewController(
    const std::shared_ptr<UIViewController>& controller) {
    if (!controller) {
        NSLog("<GAD> No UIViewController supplied to the ad.  Cannot continue.");
        return false;
    }
    if (controller->modalViewController() || parentViewController())
        return false;
    const auto vars = privateObject();
    view()->setUserInteractionEnabled(false);
    vars->hold_ = shared_from_this();
    vars->isFirst_ = dynamic_cast<GADViewController*>(controller.get()) == nullptr;
    GADNotificationCenter::defaultCenter().postNotification(
        kGADViewControllerWillPresentFullScreenNotification, this);
    if (vars->isFirst_) {
        delegateManager()->willPresentScreen();
        coverHost(*vars);
    }
    controller->presentModalViewController(shared_from_this(), true);
    if (!parentViewController()) {
        relinquishScreen(); // a delegate has covered the host
        return false;
    }
    if (vars->isFirst_)
        NSRunLoop::performAfterDelay(
            kSecondsUntilAppeared,
            weakly(this, [](GADViewController& self) { self.viewDidAppear(true); }));
    return true;
}

bool GADViewController::hidesStatusBar() const {
    constexpr int major = 3;
    constexpr int minor = 2;
    return modalPresentationStyle() == UIModalPresentationStyle::FullScreen ||
           !GADRequest::deviceAtLeastMinimumOSMajorVersionMinorVersion(major, minor);
}

void GADViewController::coverHost(GADViewControllerPrivate& vars) {
    UIApplication& application = UIApplication::sharedApplication();
    if (hidesStatusBar()) {
        vars.statusBarWasHidden_ = application.isStatusBarHidden();
        application.setStatusBarHidden(true);
    }
    vars.publisherIdleTimerDisabled_ = application.isIdleTimerDisabled();
    application.setIdleTimerDisabled(true);
}

void GADViewController::uncoverHost(const GADViewControllerPrivate& vars) {
    UIApplication& application = UIApplication::sharedApplication();
    if (hidesStatusBar() && !vars.statusBarWasHidden_)
        application.setStatusBarHidden(false);
    application.setIdleTimerDisabled(vars.publisherIdleTimerDisabled_);
}

void GADViewController::relinquishScreen() {
    const auto vars = privateObject();
    if (!vars->hold_)
        return;
    view()->setUserInteractionEnabled(false);
    gadAutorelease(std::exchange(vars->hold_, nullptr));
    if (vars->isFirst_) {
        delegateManager()->willDismissScreen();
        uncoverHost(*vars);
    }
    if (UIViewController* parent = parentViewController())
        parent->dismissModalViewControllerAnimated(true);
    GADNotificationCenter::defaultCenter().postNotification(
        kGADViewControllerDidRelinquishFullScreenNotification, this);
}

/// The host has dismissed this screen or one below it.
void GADViewController::letGo() {
    const auto vars = privateObject();
    if (!vars->hold_ || parentViewController())
        return;
    gadAutorelease(std::exchange(vars->hold_, nullptr));
    if (vars->isFirst_)
        uncoverHost(*vars);
    GADNotificationCenter::defaultCenter().postNotification(
        kGADViewControllerDidRelinquishFullScreenNotification, this);
}

void GADViewController::viewDidAppear(bool animated) {
    const auto vars = privateObject();
    if (!vars->hold_ || view()->isUserInteractionEnabled())
        return;
    UIViewController::viewDidAppear(animated);
    view()->setUserInteractionEnabled(true);
}

void GADViewController::viewDidDisappear(bool animated) {
    UIViewController::viewDidDisappear(animated);
    GADStatistics& statistics = GADStatistics::sharedStatistics();
    statistics.endTimingNamed("plpd");
    statistics.endTimingNamed("pcl");
    letGo();
}

bool GADViewController::shouldAutorotateToInterfaceOrientation(UIInterfaceOrientation orientation) {
    switch (supportedOrientations()) {
    case GADSupportedOrientations::Portrait:
        return !UIInterfaceOrientationIsLandscape(orientation);
    case GADSupportedOrientations::Landscape:
        return UIInterfaceOrientationIsLandscape(orientation);
    default:
        return true;
    }
}

bool GADViewController::escapePressed() {
    relinquishScreen();
    return true;
}

GADSupportedOrientations GADViewController::supportedOrientations() const {
    return privateObject()->supportedOrientations_;
}

void GADViewController::setSupportedOrientations(GADSupportedOrientations orientations) {
    privateObject()->supportedOrientations_ = orientations;
}

std::shared_ptr<GADWebView> GADViewController::openingWebView() const {
    return privateObject()->openingWebView_.lock();
}

void GADViewController::setOpeningWebView(std::weak_ptr<GADWebView> webView) {
    privateObject()->openingWebView_ = std::move(webView);
}

std::shared_ptr<GADDelegateManager> GADViewController::delegateManager() const {
    auto& manager = privateObject()->delegateManager_;
    if (!manager)
        manager = std::make_shared<GADDelegateManager>();
    return manager;
}

void GADViewController::setDelegateManager(std::shared_ptr<GADDelegateManager> manager) {
    privateObject()->delegateManager_ = std::move(manager);
}

bool GADViewController::statusBarWasHidden() const {
    return privateObject()->statusBarWasHidden_;
}

void GADViewController::setStatusBarWasHidden(bool hidden) {
    privateObject()->statusBarWasHidden_ = hidden;
}

bool GADViewController::isFirstGADViewController() const {
    return privateObject()->isFirst_;
}

}
