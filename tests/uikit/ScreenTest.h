#pragma once
#include "platform/graphics/Bitmap.h"
#include "platform/uikit/UIKey.h"
#include "platform/uikit/UIWindow.h"
#include "tests/support/HostTest.h"

#include <memory>
#include <string>
#include <vector>

namespace vistrel {
class UIImage;

/// Tests of what is on the screen: a window, a finger, a keyboard, and a look at the pixels.
class ScreenTest : public support::HostTest {
protected:
    ScreenTest();
    ~ScreenTest() override;

    UIWindow& window() { return *window_; }

    // The finger, in screen points.
    void touchDown(CGPoint point);
    void touchMove(CGPoint point);
    void touchUp(CGPoint point);
    void tap(CGPoint point);
    /// In the middle of the view.
    void tap(const UIView& view);
    /// The visible button that a screen reader would call so; fails the test when there is none.
    void tapButton(const std::string& label);
    bool press(UIKeyCode code, bool shift = false);
    bool type(const std::string& text);

    /// Frontmost first, what a screen reader would find with that role and label.
    std::shared_ptr<UIView> find(UIAccessibilityRole role, const std::string& label);
    /// Labels of the role in the view and below it, in tree order.
    std::vector<std::string> labels(UIAccessibilityRole role, UIView& below);
    UIView& screen();

private:
    double now();

    std::shared_ptr<UIWindow> window_;
};

/// One colour all over.
std::shared_ptr<const UIImage> plainImage(int width, int height, std::uint32_t pixel);
/// The pixel under a point of the view, drawn at one pixel a point.
std::uint32_t pixelOf(UIView& view, int x, int y);
/// Whether the part of the view has a pixel that `matches`.
bool anyPixel(UIView& view, const CGRect& part, const std::function<bool(std::uint32_t)>& matches);

}
