#include "platform/uikit/UIApplication.h"

#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSNotificationCenter.h"
#include "platform/foundation/NSURL.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/graphics/UIImage.h"
#include "platform/host/Desktop.h"
#include "platform/host/Display.h"
#include "platform/host/Host.h"
#include "platform/uikit/CADisplayLink.h"
#include "platform/uikit/SceneWalk.h"
#include "platform/uikit/UIApplicationDelegate.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIFocusRing.h"
#include "platform/uikit/UIScreen.h"
#include "platform/uikit/UIScreenView.h"
#include "platform/uikit/UIStatusBar.h"
#include "platform/uikit/UIViewAnimation.h"
#include "platform/uikit/UIViewAnimationEngine.h"
#include "platform/uikit/UIViewController.h"
#include "platform/uikit/UIWindow.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

constexpr double kBarHeight = 20;
constexpr double kBarFade = 0.3;

void post(const char* name) {
    NSNotificationCenter::defaultCenter().postNotification(name,
                                                           &UIApplication::sharedApplication());
}

double levelOf(const UIView& view) {
    const auto* window = dynamic_cast<const UIWindow*>(&view);
    return window != nullptr ? window->windowLevel() : UIWindowLevelStatusBar;
}

}

std::unique_ptr<UIApplication>& UIApplication::instance() {
    // Not destroyed at exit: the destructor needs the host, which is gone by then.
    static auto& shared = *new std::unique_ptr<UIApplication>;
    return shared;
}

UIApplication& UIApplication::sharedApplication() {
    auto& shared = instance();
    if (!shared) {
        shared.reset(new UIApplication);
        shared->placeStatusBar();
        shared->statusBar_->updateClock();
    }
    return *shared;
}

void UIApplication::resetSharedApplication() {
    UIViewAnimationEngine::shared().reset();
    // Views being destroyed may still use the application, so it goes last.
    if (auto& shared = instance()) {
        shared->delegate_.reset();
        shared->screen_->turnOff();
        shared.reset();
    }
}

UIApplication::UIApplication()
    : screen_(std::make_shared<UIScreenView>(UIScreen::mainScreen().bounds()))
    , statusBar_(std::make_shared<UIStatusBar>())
    , events_(std::make_unique<UIEventDispatcher>(*screen_))
    , focusRing_(std::make_shared<UIFocusRing>()) {
    auto* display = host::current().display;
    UIImage::setScreenScale(display->scale());
    display->setFrameHandler(&CADisplayLink::fire);
    screen_->addSubview(statusBar_);
}

UIApplication::~UIApplication() = default;

void UIApplication::setDelegate(std::shared_ptr<UIApplicationDelegate> delegate) {
    delegate_ = std::move(delegate);
}

void UIApplication::showWindow(UIWindow& window) {
    const auto self = window.shared_from_this();
    std::size_t index = 0;
    for (const auto& other : screen_->subviews())
        if (other != self && levelOf(*other) <= window.windowLevel())
            ++index;
    screen_->insertSubviewAtIndex(self, index);
    window.setHidden(false);
}

void UIApplication::setKeyWindow(UIWindow& window) {
    keyWindow_ = window.weak_from_this();
}

UIWindow* UIApplication::keyWindow() const {
    const auto made = keyWindow_.lock();
    if (made && made->superview() == screen_.get() && !made->isHidden())
        return static_cast<UIWindow*>(made.get());
    return frontWindow();
}

UIWindow* UIApplication::frontWindow() const {
    const auto& windows = screen_->subviews();
    for (auto view = windows.rbegin(); view != windows.rend(); ++view) {
        auto* window = dynamic_cast<UIWindow*>(view->get());
        if (window != nullptr && !window->isHidden() && window->isUserInteractionEnabled())
            return window;
    }
    return nullptr;
}

void UIApplication::setStatusBarHidden(bool hidden) {
    statusBarHidden_ = hidden;
    statusBar_->setHidden(hidden);
}

void UIApplication::setStatusBarOrientation(UIInterfaceOrientation orientation, bool animated) {
    if (statusBarOrientation_ == orientation)
        return;
    statusBarOrientation_ = orientation;
    UIViewAnimation::withoutAnimation([&] {
        placeStatusBar();
        statusBar_->setAlpha(animated ? 0 : 1);
    });
    if (animated) {
        UIViewAnimation::beginAnimations();
        UIViewAnimation::setAnimationDuration(kBarFade);
        statusBar_->setAlpha(1);
        UIViewAnimation::commitAnimations();
    }
    NSNotificationCenter::defaultCenter().postNotification(
        UIApplicationDidChangeStatusBarOrientationNotification, this);
}

void UIApplication::placeStatusBar() {
    const auto screen = UIScreen::mainScreen().bounds();
    double turn = 0;
    CGPoint center = {screen.midX(), kBarHeight / 2};
    switch (statusBarOrientation_) {
    case UIInterfaceOrientation::Portrait:
        break;
    case UIInterfaceOrientation::PortraitUpsideDown:
        turn = M_PI;
        center.y = screen.maxY() - kBarHeight / 2;
        break;
    case UIInterfaceOrientation::LandscapeRight:
        turn = M_PI / 2;
        center = {screen.maxX() - kBarHeight / 2, screen.midY()};
        break;
    case UIInterfaceOrientation::LandscapeLeft:
        turn = -M_PI / 2;
        center = {kBarHeight / 2, screen.midY()};
        break;
    }
    const bool lies = UIInterfaceOrientationIsLandscape(statusBarOrientation_);
    statusBar_->setTransform(CGAffineTransformMakeRotation(turn));
    statusBar_->setBounds(
        CGRectMake(0, 0, lies ? screen.size.height : screen.size.width, kBarHeight));
    statusBar_->setCenter(center);
}

CGRect UIApplication::statusBarFrame() const {
    return statusBarHidden_ ? CGRect{} : statusBar_->frame();
}

void UIApplication::setNetworkActivityIndicatorVisible(bool visible) {
    networkActivity_ = visible;
    statusBar_->setNetworkActivity(visible);
}

void UIApplication::setIdleTimerDisabled(bool disabled) {
    idleTimerDisabled_ = disabled;
    host::current().desktop->setIdleTimerDisabled(disabled);
}

void UIApplication::presentLocalNotification(const std::string& title, const std::string& text) {
    if (!host::current().display->isInFront())
        host::current().desktop->notify(title, text);
}

bool UIApplication::canOpenURL(const NSURL& url) {
    return host::current().desktop->canOpenURL(url.absoluteString());
}

bool UIApplication::openURL(const NSURL& url) {
    const bool opens = host::current().desktop->openURL(url.absoluteString());
    if (!opens)
        NSLog("No program is known that opens " + url.scheme() + " addresses");
    return opens;
}

void UIApplication::finishLaunching() {
    if (delegate_) {
        const auto delegate = delegate_;
        delegate->applicationDidFinishLaunching(*this);
    }
    post(UIApplicationDidFinishLaunchingNotification);
}

void UIApplication::terminate() {
    if (delegate_) {
        const auto delegate = delegate_;
        delegate->applicationWillTerminate(*this);
    }
    post(UIApplicationWillTerminateNotification);
    // What was set just now is saved by the run loop, which has ended.
    (void)NSUserDefaults::standardUserDefaults().synchronize();
}

void UIApplication::receiveMemoryWarning() {
    if (delegate_) {
        const auto delegate = delegate_;
        delegate->applicationDidReceiveMemoryWarning(*this);
    }
    post(UIApplicationDidReceiveMemoryWarningNotification);
}

void UIApplication::setState(UIApplicationState state) {
    if (state == state_)
        return;
    const auto old = std::exchange(state_, state);
    if (old == UIApplicationState::Active)
        post(UIApplicationWillResignActiveNotification);
    if (old == UIApplicationState::Background)
        post(UIApplicationWillEnterForegroundNotification);
    if (state == UIApplicationState::Background)
        post(UIApplicationDidEnterBackgroundNotification);
    if (state == UIApplicationState::Active)
        post(UIApplicationDidBecomeActiveNotification);
}

void UIApplication::walkScreen(SceneVisitor& visitor) {
    SceneWalk::walk(*screen_, visitor);
    const auto part = events_->showsFocus() ? events_->focusedPart() : nullptr;
    if (part && focusRing_->surround(*part))
        SceneWalk::walk(*focusRing_, visitor);
}

UIView& UIApplication::screenView() {
    return *screen_;
}

}
