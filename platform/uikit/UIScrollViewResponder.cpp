#include "platform/uikit/UIKey.h"
#include "platform/uikit/UIScrollView.h"
#include "platform/uikit/UITouch.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

constexpr double kCaptureDistance = 10;
constexpr double kKeyStep = 44;

}

bool UIScrollView::canMoveVertically() const {
    return alwaysBounceVertical_ || maximumOffset().y > minimumOffset().y;
}

bool UIScrollView::canMoveHorizontally() const {
    return maximumOffset().x > minimumOffset().x;
}

bool UIScrollView::hasMovedFarEnough(const UITouch& touch) const {
    const double dx = std::abs(touch.windowLocation.x - touch.startWindowLocation.x);
    const double dy = std::abs(touch.windowLocation.y - touch.startWindowLocation.y);
    return (canMoveVertically() && dy >= kCaptureDistance && dy >= dx) ||
           (canMoveHorizontally() && dx >= kCaptureDistance && dx > dy);
}

bool UIScrollView::shouldCaptureTouch(const UITouch& touch) {
    return !isDragging() && hasMovedFarEnough(touch);
}

bool UIScrollView::touchWillBeginInside(const UITouch& touch) {
    if (!isDecelerating())
        return false;
    beginDrag(touch);
    return true;
}

void UIScrollView::beginDrag(const UITouch& touch) {
    const double now = touch.timestamp;
    if (canMoveHorizontally())
        horizontal_.beginDrag(touch.windowLocation.x, now);
    if (canMoveVertically())
        vertical_.beginDrag(touch.windowLocation.y, now);
    motionChanged();
    willBeginDragging();
}

void UIScrollView::touchesBegan(const UITouch& touch) {
    if (!isDragging() && (isDecelerating() || hasMovedFarEnough(touch)))
        beginDrag(touch);
}

void UIScrollView::touchesMoved(const UITouch& touch) {
    if (!isDragging()) {
        if (hasMovedFarEnough(touch))
            beginDrag(touch);
        return;
    }
    horizontal_.dragTo(touch.windowLocation.x, touch.timestamp);
    vertical_.dragTo(touch.windowLocation.y, touch.timestamp);
    motionChanged();
}

void UIScrollView::touchesEnded(const UITouch& touch) {
    if (!isDragging())
        return;
    horizontal_.endDrag(touch.timestamp);
    vertical_.endDrag(touch.timestamp);
    motionChanged();
}

void UIScrollView::touchesCancelled(const UITouch& touch) {
    if (!isDragging())
        return;
    horizontal_.stop(touch.timestamp);
    vertical_.stop(touch.timestamp);
    motionChanged();
}

bool UIScrollView::keyPressed(const UIKey& key) {
    const double page = bounds().size.height - kKeyStep;
    const CGPoint now = contentOffset();
    double aim = now.y;
    switch (key.code) {
    case UIKeyCode::Up:
        aim -= kKeyStep;
        break;
    case UIKeyCode::Down:
        aim += kKeyStep;
        break;
    case UIKeyCode::PageUp:
        aim -= page;
        break;
    case UIKeyCode::PageDown:
    case UIKeyCode::Space:
        aim += page;
        break;
    case UIKeyCode::Home:
        aim = minimumOffset().y;
        break;
    case UIKeyCode::End:
        aim = maximumOffset().y;
        break;
    default:
        return false;
    }
    aim = std::clamp(aim, minimumOffset().y, maximumOffset().y);
    if (aim == now.y)
        return false;
    moveTo({now.x, aim}, true);
    return true;
}

}
