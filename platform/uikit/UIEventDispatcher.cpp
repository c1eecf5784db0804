#include "platform/uikit/UIEventDispatcher.h"

#include "platform/uikit/UIView.h"

#include <cmath>
#include <utility>

namespace vistrel {

namespace {

constexpr double kMultipleTapTime = 0.35;
constexpr double kMultipleTapDistance = 24;
constexpr double kTapSlop = 12;

double distance(CGPoint a, CGPoint b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

}

UIEventDispatcher::UIEventDispatcher(UIView& root)
    : root_(root) {}

void UIEventDispatcher::sendTouch(UITouchPhase phase, CGPoint location, double timestamp) {
    if (phase == UITouchPhase::Began) {
        if (!touch_ && !isIgnoringInteraction())
            began(location, timestamp);
        return;
    }
    if (!touch_)
        return;
    touch_->phase = phase;
    touch_->timestamp = timestamp;
    touch_->windowLocation = location;
    if (phase == UITouchPhase::Moved)
        moved();
    else
        ended(phase);
}

void UIEventDispatcher::countTap(CGPoint location, double timestamp) {
    const bool follows = tapCount_ > 0 && timestamp - lastTapTime_ <= kMultipleTapTime &&
                         distance(location, lastTapLocation_) <= kMultipleTapDistance;
    tapCount_ = follows ? tapCount_ + 1 : 1;
}

bool UIEventDispatcher::touchBeginsInForeignContent(CGPoint location, double timestamp) {
    const auto hit = root_.hitTest(location);
    if (!hit || !hit->foreignContent())
        return false;
    UITouch touch;
    touch.view = hit;
    touch.timestamp = timestamp;
    touch.windowLocation = touch.startWindowLocation = location;
    (void)hit->touchWillBeginInside(touch);
    showFocus(false);
    if (hit->canBecomeFirstResponder())
        setFirstResponder(hit);
    return true;
}

void UIEventDispatcher::began(CGPoint location, double timestamp) {
    showFocus(false);
    countTap(location, timestamp);
    UITouch touch;
    touch.timestamp = timestamp;
    touch.windowLocation = touch.startWindowLocation = location;
    touch.tapCount = tapCount_;
    auto hit = root_.hitTest(location);
    if (hit.get() == &root_)
        hit = nullptr;
    touch.view = hit;
    touch_ = touch;
    touchOwner_ = hit;
    for (auto view = hit; view;) {
        if (view->touchWillBeginInside(touch)) {
            touchOwner_ = view;
            break;
        }
        auto* above = view->superview();
        view = above != nullptr ? above->shared_from_this() : nullptr;
    }
    if (const auto owner = touchOwner_.lock())
        owner->touchesBegan(touch);
}

bool UIEventDispatcher::ownerIsGone() const {
    const auto owner = touchOwner_.lock();
    return owner && (!owner->isDescendantOfView(root_) || !owner->isOnScreen());
}

void UIEventDispatcher::moved() {
    if (distance(touch_->windowLocation, touch_->startWindowLocation) > kTapSlop) {
        // No longer a tap, nor the first half of a double one.
        tapCount_ = 0;
    }
    if (ownerIsGone()) {
        cancelTouch();
        return;
    }
    offerCapture();
    if (const auto owner = touchOwner_.lock(); owner && touch_) {
        const auto touch = *touch_;
        owner->touchesMoved(touch);
    }
}

void UIEventDispatcher::offerCapture() {
    const auto owner = touchOwner_.lock();
    const auto touch = *touch_;
    auto* above = owner ? owner->superview() : nullptr;
    while (above != nullptr && above != &root_) {
        const auto candidate = above->shared_from_this();
        if (candidate->isUserInteractionEnabled() && candidate->shouldCaptureTouch(touch)) {
            touchOwner_ = candidate;
            owner->touchesCancelled(touch);
            if (touchOwner_.lock() == candidate && touch_)
                candidate->touchesBegan(touch);
            return;
        }
        above = candidate->superview();
    }
}

void UIEventDispatcher::ended(UITouchPhase phase) {
    if (phase == UITouchPhase::Cancelled || ownerIsGone()) {
        cancelTouch();
        return;
    }
    // Forgotten first: the handler may begin or cancel another touch.
    const auto touch = *std::exchange(touch_, std::nullopt);
    const auto owner = std::exchange(touchOwner_, {}).lock();
    lastTapTime_ = touch.timestamp;
    lastTapLocation_ = touch.windowLocation;
    if (owner)
        owner->touchesEnded(touch);
}

void UIEventDispatcher::cancelTouch() {
    if (!touch_)
        return;
    auto touch = *std::exchange(touch_, std::nullopt);
    const auto owner = std::exchange(touchOwner_, {}).lock();
    tapCount_ = 0;
    touch.phase = UITouchPhase::Cancelled;
    if (owner)
        owner->touchesCancelled(touch);
}

void UIEventDispatcher::sendScroll(CGPoint location, double dx, double dy, double timestamp) {
    if (isIgnoringInteraction())
        return;
    auto view = root_.hitTest(location);
    while (view && !view->scrollBy(dx, dy, timestamp)) {
        auto* above = view->superview();
        view = above != nullptr ? above->shared_from_this() : nullptr;
    }
}

bool UIEventDispatcher::sendMenuRequest(CGPoint location) {
    if (touch_ || isIgnoringInteraction())
        return false;
    auto view = root_.hitTest(location);
    while (view && !view->menuRequested(view->convertPointFromView(location, &root_))) {
        auto* above = view->superview();
        view = above != nullptr ? above->shared_from_this() : nullptr;
    }
    return view != nullptr;
}

std::optional<std::string> UIEventDispatcher::dragFileOut() {
    auto view = touch_ ? touch_->view.lock() : nullptr;
    while (view) {
        const auto point = view->convertPointFromView(touch_->startWindowLocation, &root_);
        if (auto file = view->fileDraggedFrom(point)) {
            cancelTouch();
            return file;
        }
        auto* above = view->superview();
        view = above != nullptr ? above->shared_from_this() : nullptr;
    }
    return std::nullopt;
}

void UIEventDispatcher::setFirstResponder(const std::shared_ptr<UIView>& view) {
    const auto old = firstResponder_.lock();
    if (old == view)
        return;
    firstResponder_ = view;
    root_.setNeedsComposition();
    if (old)
        old->focusChanged(false);
    if (view && firstResponder_.lock() == view)
        view->focusChanged(true);
}

}
