#include "tour/TourHands.h"

#include "platform/foundation/NSRunLoop.h"
#include "platform/uikit/UIAccessibilityTree.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIEventDispatcher.h"

#include <algorithm>

namespace vistrel::TourHands {

namespace {

constexpr double kTapSeconds = 0.12;
constexpr double kStepSeconds = 1.0 / 60;

void touch(UITouchPhase phase, CGPoint point) {
    UIApplication::sharedApplication().events().sendTouch(phase, point, NSRunLoop::now());
}

auto visibleElements() {
    return accessibilityTree(UIApplication::sharedApplication().screenView());
}

void moveOn(CGPoint from, CGPoint to, double began, double seconds) {
    const double part = std::min(1.0, (NSRunLoop::now() - began) / seconds);
    const CGPoint point{from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part};
    touch(UITouchPhase::Moved, point);
    NSRunLoop::performAfterDelay(kStepSeconds, [=] {
        if (part < 1)
            moveOn(from, to, began, seconds);
        else
            touch(UITouchPhase::Ended, to);
    });
}

}

std::optional<Sight> find(UIAccessibilityRole role, const std::string& label) {
    std::optional<Sight> beginsSo;
    for (const auto& seen : visibleElements()) {
        if (seen.element.role != role || !seen.element.label.starts_with(label))
            continue;
        if (seen.element.label == label)
            return Sight{seen.element, seen.frame};
        if (!beginsSo)
            beginsSo = Sight{seen.element, seen.frame};
    }
    return beginsSo;
}

std::string labelContaining(UIAccessibilityRole role, const std::string& part) {
    for (const auto& seen : visibleElements())
        if (seen.element.role == role && seen.element.label.find(part) != std::string::npos)
            return seen.element.label;
    return {};
}

int count(UIAccessibilityRole role) {
    const auto elements = visibleElements();
    return static_cast<int>(
        std::count_if(elements.begin(), elements.end(),
                      [role](const auto& seen) { return seen.element.role == role; }));
}

void tap(CGPoint point) {
    touch(UITouchPhase::Began, point);
    NSRunLoop::performAfterDelay(kTapSeconds, [point] { touch(UITouchPhase::Ended, point); });
}

bool tap(UIAccessibilityRole role, const std::string& label) {
    const auto sight = find(role, label);
    if (!sight)
        return false;
    tap(CGPoint{sight->frame.midX(), sight->frame.midY()});
    return true;
}

void drag(CGPoint from, CGPoint to, double seconds) {
    touch(UITouchPhase::Began, from);
    const double began = NSRunLoop::now();
    NSRunLoop::performAfterDelay(kStepSeconds, [=] { moveOn(from, to, began, seconds); });
}

}
