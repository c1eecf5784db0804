#include "tests/support/ui/ScreenTest.h"

#include "platform/foundation/NSRunLoop.h"
#include "platform/uikit/UIAccessibilityTree.h"
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIEventDispatcher.h"

namespace vistrel::support {

ScreenTest::ScreenTest() {
    const auto root = std::make_shared<UIViewController>();
    root->setTitle("Root");
    navigation_ = UINavigationController::withRootViewController(root);
    window_ = std::make_shared<UIWindow>();
    window_->addSubview(navigation_->view());
    window_->makeKeyAndVisible();
}

ScreenTest::~ScreenTest() {
    for (const auto& alert : UIAlertView::visibleAlerts())
        alert->dismissWithClickedButtonIndex(0, false);
    navigation_->view()->removeFromSuperview();
    navigation_.reset();
    window_.reset();
    UIApplication::resetSharedApplication();
}

void ScreenTest::push(const std::shared_ptr<UIViewController>& controller) {
    navigation_->pushViewController(controller, false);
    turn();
    layOut();
}

void ScreenTest::settle() {
    advance(1.5);
    layOut();
}

void ScreenTest::layOut() {
    UIApplication::sharedApplication().screenView().layoutIfNeeded();
}

void ScreenTest::tap(UIView& view) {
    const CGRect bounds = view.bounds();
    tapAt(view.convertPointToView({bounds.midX(), bounds.midY()}, nullptr));
}

void ScreenTest::tapAt(CGPoint point) {
    auto& events = UIApplication::sharedApplication().events();
    events.sendTouch(UITouchPhase::Began, point, NSRunLoop::now());
    advance(0.1);
    events.sendTouch(UITouchPhase::Ended, point, NSRunLoop::now());
    turn();
}

bool ScreenTest::tapElement(UIAccessibilityRole role, const std::string& label) {
    for (const auto& seen : accessibilityTree(UIApplication::sharedApplication().screenView())) {
        if (seen.element.role == role && seen.element.label == label) {
            tapAt({seen.frame.midX(), seen.frame.midY()});
            settle();
            return true;
        }
    }
    return false;
}

bool ScreenTest::tapAlertButton(const std::string& title) {
    settle();
    return alertCount() > 0 && tapElement(UIAccessibilityRole::Button, title);
}

std::string ScreenTest::alertTitle() const {
    const auto alerts = UIAlertView::visibleAlerts();
    return alerts.empty() ? std::string() : alerts.back()->title();
}

std::string ScreenTest::alertMessage() const {
    const auto alerts = UIAlertView::visibleAlerts();
    return alerts.empty() ? std::string() : alerts.back()->message();
}

int ScreenTest::alertCount() const {
    return static_cast<int>(UIAlertView::visibleAlerts().size());
}

}
