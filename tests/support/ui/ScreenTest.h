#pragma once
#include "platform/graphics/Bitmap.h"
#include "platform/uikit/ImageRenderer.h"
#include "platform/uikit/UIAccessibility.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIKey.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIWindow.h"
#include "tests/support/HostTest.h"
#include "tests/support/ui/Pixels.h"

namespace vistrel::support {

/// Base for tests of what is on the screen: an application with a key window on the deterministic
/// host, a finger, a keyboard, and what a screen reader finds.
class ScreenTest : public HostTest {
protected:
    ScreenTest();
    ~ScreenTest() override;

    UIApplication& application() { return UIApplication::sharedApplication(); }
    UIWindow& window() { return *window_; }
    /// The whole screen: windows and status bar.
    UIView& screen();
    /// A stack in the window whose root is an empty screen titled "Root"; made on first use.
    UINavigationController& navigation();
    void push(const std::shared_ptr<UIViewController>& controller);
    /// Pushes a new screen and lets it appear.
    template <typename Screen, typename... Arguments>
    std::shared_ptr<Screen> show(Arguments&&... arguments) {
        auto screen = std::make_shared<Screen>(std::forward<Arguments>(arguments)...);
        push(screen);
        settle();
        return screen;
    }
    /// Leaves the topmost screen, without a slide.
    void back();
    /// The topmost screen; null when it is of another kind.
    template <typename Screen = UIViewController>
    std::shared_ptr<Screen> top() {
        return std::dynamic_pointer_cast<Screen>(navigation().topViewController());
    }
    /// The screen that is presented over the stack; null when there is none of that kind.
    template <typename Screen = UIViewController>
    std::shared_ptr<Screen> presented() {
        return std::dynamic_pointer_cast<Screen>(navigation().modalViewController());
    }
    /// Lets every animation end, and lays out as the next frame would.
    void settle();
    /// The whole screen at one pixel per point.
    std::shared_ptr<Bitmap> screenshot();
    /// Composes every frame that is requested within the time, as a window does; returns how many.
    int framesComposedIn(double seconds);

    // The finger, in screen points.
    void touchDown(CGPoint point);
    void touchMove(CGPoint point);
    void touchUp(CGPoint point);
    void tap(CGPoint point);
    /// A finger that moves in six steps, each of them shown.
    void drag(CGPoint from, CGPoint to, double seconds = 0.1);
    /// In the middle of the view.
    void tap(const UIView& view);
    /// The visible button of that label; fails the test when there is none.
    void tapButton(const std::string& label);
    /// Taps what a screen reader finds and settles; false when there is no such element.
    bool tapElement(UIAccessibilityRole role, const std::string& label);
    bool press(UIKeyCode code, bool shift = false);
    bool type(const std::string& text);

    /// Inputs, separated by ";": "tap 10,20", "down 10,20", "move 10,20", "up 10,20",
    /// "second 10,20" (the mouse's other button), "drag 10,20 10,90 0.1" (seconds), "wheel 10,20
    /// 50", "button Delete", "key Escape", "key Down 3" (times), "shift Left", "type text", "media
    /// pause", "wait 0.5", and "show 0.5" (composing the frames of that time).
    void act(const std::string& inputs);
    struct Step {
        std::string inputs;
        std::string state;
    };
    /// Performs the steps and compares what `state` says after each.
    template <typename State>
    void expectSteps(const std::vector<Step>& steps, State state) {
        for (const auto& [inputs, expected] : steps) {
            SCOPED_TRACE(inputs);
            act(inputs);
            EXPECT_EQ(state(), expected);
        }
    }
    /// A new view in the window.
    template <typename View, typename... Arguments>
    std::shared_ptr<View> add(Arguments&&... arguments) {
        auto view = std::make_shared<View>(std::forward<Arguments>(arguments)...);
        window_->addSubview(view);
        return view;
    }

    /// Frontmost first, what a screen reader would find with that role and label.
    std::shared_ptr<UIView> find(UIAccessibilityRole role, const std::string& label);
    /// The frontmost view of a class in another view; null when there is none.
    template <typename View>
    static std::shared_ptr<View> findBelow(UIView& above) {
        std::shared_ptr<View> found;
        for (const auto& view : above.subviews()) {
            if (auto made = std::dynamic_pointer_cast<View>(view))
                found = std::move(made);
        }
        return found;
    }
    /// Of the visible button of that label, on the screen; nothing when there is none.
    CGRect placeOfButton(const std::string& label);
    /// Labels of the role in the view and below it, in tree order.
    std::vector<std::string> labels(UIAccessibilityRole role, UIView& below);

    /// Taps the button of the topmost alert; false when there is no such button.
    bool tapAlertButton(const std::string& title);
    /// "Title | message" of the topmost alert, "Title" without a message; empty for no alert.
    std::string alert() const;
    std::string alertTitle() const;
    std::string alertMessage() const;
    int alertCount() const;
    /// Lays out the window's views, as a frame would.
    void layOut();

private:
    void perform(const std::string& verb, std::istream& words);
    void dragAlong(std::istream& words);
    void turnWheel(std::istream& words);
    void pressKey(std::istream& words, bool shift);

    std::shared_ptr<UIWindow> window_;
    std::shared_ptr<UINavigationController> navigation_;
};

}
