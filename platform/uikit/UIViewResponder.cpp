#include "platform/foundation/NSRunLoop.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIView.h"

namespace vistrel {

namespace {
constexpr double kLeastTouchableAlpha = 0.01;
}

std::shared_ptr<UIView> UIView::hitTest(CGPoint point) {
    if (hidden_ || !userInteractionEnabled_ || state_.alpha < kLeastTouchableAlpha ||
        !pointInside(point))
        return nullptr;
    for (auto child = subviews_.rbegin(); child != subviews_.rend(); ++child) {
        const auto inChild = (*child)->state_.toSuperview().inverted().apply(point);
        if (auto hit = (*child)->hitTest(inChild))
            return hit;
    }
    return shared_from_this();
}

bool UIView::pointInside(CGPoint point) const {
    return state_.bounds.contains(point);
}

void UIView::touchesBegan(const UITouch& /*touch*/) {}

void UIView::touchesMoved(const UITouch& /*touch*/) {}

void UIView::touchesEnded(const UITouch& /*touch*/) {}

void UIView::touchesCancelled(const UITouch& /*touch*/) {}

bool UIView::shouldCaptureTouch(const UITouch& /*touch*/) {
    return false;
}

bool UIView::touchWillBeginInside(const UITouch& /*touch*/) {
    return false;
}

bool UIView::keyPressed(const UIKey& /*key*/) {
    return false;
}

void UIView::accessibilityActivate() {
    if (!isOnScreen())
        return;
    const auto middle =
        transformToRoot().apply(CGPoint{state_.bounds.midX(), state_.bounds.midY()});
    auto& events = UIApplication::sharedApplication().events();
    const double now = NSRunLoop::now();
    events.sendTouch(UITouchPhase::Began, middle, now);
    events.sendTouch(UITouchPhase::Ended, middle, now);
}

}
