#include "platform/uikit/UIControl.h"

#include "platform/uikit/UIKey.h"
#include "platform/uikit/UITouch.h"

namespace vistrel {

namespace {

/// How far a finger may stray from the control and still press it.
constexpr double kTrackingSlop = 40;

bool isPressing(const UIControl& control, const UITouch& touch) {
    return control.bounds()
        .insetBy(-kTrackingSlop, -kTrackingSlop)
        .contains(touch.locationInView(control));
}

}

UIControl::UIControl(CGRect frame)
    : UIView(frame) {}

void UIControl::addTarget(std::function<void()> action, unsigned controlEvents) {
    targets_.emplace_back(controlEvents, std::move(action));
}

void UIControl::sendActionsForControlEvents(unsigned controlEvents) {
    const auto self = weak_from_this().lock();
    const auto targets = targets_;
    for (const auto& [events, action] : targets)
        if (events & controlEvents)
            action();
}

void UIControl::setEnabled(bool enabled) {
    if (enabled_ == enabled)
        return;
    enabled_ = enabled;
    if (!enabled && highlighted_)
        setHighlighted(false);
    setNeedsDisplay();
}

void UIControl::setHighlighted(bool highlighted) {
    if (highlighted_ == highlighted)
        return;
    highlighted_ = highlighted;
    setNeedsDisplay();
}

void UIControl::setSelected(bool selected) {
    if (selected_ == selected)
        return;
    selected_ = selected;
    setNeedsDisplay();
}

void UIControl::touchesBegan(const UITouch&) {
    if (!enabled_)
        return;
    tracking_ = true;
    setHighlighted(true);
    sendActionsForControlEvents(UIControlEventTouchDown);
}

void UIControl::touchesMoved(const UITouch& touch) {
    if (enabled_ && tracking_)
        setHighlighted(isPressing(*this, touch));
}

void UIControl::touchesEnded(const UITouch& touch) {
    if (!tracking_)
        return;
    tracking_ = false;
    const bool enabled = enabled_;
    setHighlighted(false);
    if (enabled)
        sendActionsForControlEvents(isPressing(*this, touch) ? UIControlEventTouchUpInside
                                                             : UIControlEventTouchUpOutside);
}

void UIControl::touchesCancelled(const UITouch&) {
    if (!tracking_)
        return;
    tracking_ = false;
    setHighlighted(false);
    sendActionsForControlEvents(UIControlEventTouchCancel);
}

bool UIControl::keyPressed(const UIKey& key) {
    const bool presses = key.code == UIKeyCode::Enter || key.code == UIKeyCode::Space;
    if (!presses || !enabled_)
        return false;
    sendActionsForControlEvents(UIControlEventTouchUpInside);
    return true;
}

}
