#pragma once
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIWindow.h"
#include "tests/support/HostTest.h"

#include <memory>
#include <string>

namespace vistrel::support {

/// Base of the tests of whole screens: a window with a navigation stack on the deterministic host.
class ScreenTest : public HostTest {
protected:
    ScreenTest();
    ~ScreenTest() override;

    /// A stack whose root is an empty screen titled "Root", in the key window.
    UINavigationController& navigation() { return *navigation_; }
    UIWindow& window() { return *window_; }
    void push(const std::shared_ptr<UIViewController>& controller);
    /// Lets every animation end, and lays out as the next frame would.
    void settle();
    void layOut();
    /// Finger down and up in the middle of the view.
    void tap(UIView& view);
    void tapAt(CGPoint point);
    /// Taps what a screen reader finds; false when there is no such element.
    bool tapElement(UIAccessibilityRole role, const std::string& label);
    /// Taps the button of the topmost alert; false when there is no such button.
    bool tapAlertButton(const std::string& title);
    /// Title of the topmost alert; empty for none.
    std::string alertTitle() const;
    std::string alertMessage() const;
    int alertCount() const;

private:
    std::shared_ptr<UIWindow> window_;
    std::shared_ptr<UINavigationController> navigation_;
};

}
