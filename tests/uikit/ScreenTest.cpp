#include "tests/uikit/ScreenTest.h"

#include "platform/graphics/UIImage.h"
#include "platform/uikit/ImageRenderer.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIEventDispatcher.h"

namespace vistrel {

namespace {

const bool kForgetsApplication =
    support::HostTest::addResetHook([] { UIApplication::resetSharedApplication(); });

std::shared_ptr<UIView> findBelow(const std::shared_ptr<UIView>& view, UIAccessibilityRole role,
                                  const std::string& label) {
    if (view->isHidden() || view->alpha() <= 0)
        return nullptr;
    for (auto child = view->subviews().rbegin(); child != view->subviews().rend(); ++child) {
        if (auto found = findBelow(*child, role, label))
            return found;
    }
    const auto element = view->accessibilityElement();
    return element.role == role && element.label == label ? view : nullptr;
}

void collect(UIView& view, UIAccessibilityRole role, std::vector<std::string>& labels) {
    if (view.isHidden())
        return;
    const auto element = view.accessibilityElement();
    if (element.role == role)
        labels.push_back(element.label);
    for (const auto& child : view.subviews())
        collect(*child, role, labels);
}

}

ScreenTest::ScreenTest()
    : window_(std::make_shared<UIWindow>()) {
    window_->makeKeyAndVisible();
}

ScreenTest::~ScreenTest() = default;

double ScreenTest::now() {
    return loop().now();
}

UIView& ScreenTest::screen() {
    return UIApplication::sharedApplication().screenView();
}

void ScreenTest::touchDown(CGPoint point) {
    UIApplication::sharedApplication().events().sendTouch(UITouchPhase::Began, point, now());
}

void ScreenTest::touchMove(CGPoint point) {
    UIApplication::sharedApplication().events().sendTouch(UITouchPhase::Moved, point, now());
}

void ScreenTest::touchUp(CGPoint point) {
    UIApplication::sharedApplication().events().sendTouch(UITouchPhase::Ended, point, now());
}

void ScreenTest::tap(CGPoint point) {
    touchDown(point);
    touchUp(point);
}

void ScreenTest::tap(const UIView& view) {
    tap(view.convertPointToView({view.bounds().midX(), view.bounds().midY()}, nullptr));
}

void ScreenTest::tapButton(const std::string& label) {
    renderViewToBitmap(screen(), 1); // lays out
    const auto button = find(UIAccessibilityRole::Button, label);
    ASSERT_NE(button, nullptr) << "no button " << label;
    tap(*button);
}

bool ScreenTest::press(UIKeyCode code, bool shift) {
    UIKey key;
    key.code = code;
    key.shift = shift;
    return UIApplication::sharedApplication().events().sendKey(key);
}

bool ScreenTest::type(const std::string& text) {
    UIKey key;
    key.text = text;
    return UIApplication::sharedApplication().events().sendKey(key);
}

std::shared_ptr<UIView> ScreenTest::find(UIAccessibilityRole role, const std::string& label) {
    return findBelow(screen().shared_from_this(), role, label);
}

std::vector<std::string> ScreenTest::labels(UIAccessibilityRole role, UIView& below) {
    std::vector<std::string> found;
    collect(below, role, found);
    return found;
}

std::shared_ptr<const UIImage> plainImage(int width, int height, std::uint32_t pixel) {
    auto bitmap = std::make_shared<Bitmap>(width, height);
    for (int y = 0; y < height; ++y)
        std::fill_n(bitmap->row(y), width, pixel);
    return std::make_shared<UIImage>(bitmap, 1);
}

std::uint32_t pixelOf(UIView& view, int x, int y) {
    return renderViewToBitmap(view, 1)->pixel(x, y);
}

bool anyPixel(UIView& view, const CGRect& part, const std::function<bool(std::uint32_t)>& matches) {
    const auto picture = renderViewToBitmap(view, 1);
    for (int y = static_cast<int>(part.minY()); y < part.maxY(); ++y) {
        for (int x = static_cast<int>(part.minX()); x < part.maxX(); ++x) {
            if (matches(picture->pixel(x, y)))
                return true;
        }
    }
    return false;
}

}
