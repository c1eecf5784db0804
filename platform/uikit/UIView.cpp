#include "platform/uikit/UIView.h"

#include "platform/graphics/Bitmap.h"
#include "platform/uikit/CAGradientLayer.h"
#include "platform/uikit/UIViewAnimationEngine.h"
#include "platform/uikit/UIViewController.h"
#include "platform/uikit/UIWindow.h"

#include <algorithm>
#include <cassert>

namespace vistrel {

UIView::UIView(CGRect frame)
    : UIView(frame, nullptr) {}

UIView::UIView(CGRect frame, UIWindow* window)
    : window_(window) {
    state_.center = {frame.midX(), frame.midY()};
    state_.bounds = {{0, 0}, frame.size};
}

UIView::~UIView() {
    UIViewAnimationEngine::shared().forget(*this);
    detachSubviews();
}

void UIView::detachSubviews() {
    const auto orphans = std::move(subviews_);
    subviews_.clear();
    for (const auto& orphan : orphans) {
        orphan->superview_ = nullptr;
        orphan->windowDidChange(nullptr);
    }
}

void UIView::setHidden(bool hidden) {
    if (hidden_ == hidden)
        return;
    // Visible before or after: the frame is requested while it counts as visible.
    hidden_ = false;
    setNeedsComposition();
    hidden_ = hidden;
}

void UIView::setOpaque(bool opaque) {
    if (opaque_ != opaque) {
        opaque_ = opaque;
        setNeedsDisplay();
    }
}

void UIView::setClipsToBounds(bool clips) {
    if (clipsToBounds_ != clips) {
        clipsToBounds_ = clips;
        setNeedsComposition();
    }
}

void UIView::setUserInteractionEnabled(bool enabled) {
    userInteractionEnabled_ = enabled;
}

UIWindow* UIView::window() const {
    return window_;
}

bool UIView::isDescendantOfView(const UIView& view) const {
    for (const auto* ancestor = this; ancestor != nullptr; ancestor = ancestor->superview_)
        if (ancestor == &view)
            return true;
    return false;
}

void UIView::addSubview(std::shared_ptr<UIView> view) {
    insertSubviewAtIndex(std::move(view), subviews_.size());
}

void UIView::insertSubviewAtIndex(std::shared_ptr<UIView> view, std::size_t index) {
    assert(view && !isDescendantOfView(*view) && "a view cannot stand inside itself");
    auto& added = *view;
    const bool staysHere = added.superview_ == this;
    if (staysHere)
        std::erase(subviews_, view);
    else
        added.removeFromSuperview();
    index = std::min(index, subviews_.size());
    subviews_.insert(subviews_.begin() + static_cast<std::ptrdiff_t>(index), std::move(view));
    if (staysHere)
        added.setNeedsComposition();
    else
        added.attachTo(this);
}

void UIView::insertSubviewBelowSubview(std::shared_ptr<UIView> view, const UIView& sibling) {
    const auto isSibling = [&](const auto& other) {
        return other.get() == &sibling;
    };
    const auto isView = [&](const auto& other) {
        return other == view;
    };
    auto position = std::find_if(subviews_.begin(), subviews_.end(), isSibling);
    auto index = static_cast<std::size_t>(position - subviews_.begin());
    // Removing the view from its old place shifts the sibling down.
    if (std::find_if(subviews_.begin(), position, isView) != position)
        --index;
    insertSubviewAtIndex(std::move(view), index);
}

void UIView::bringSubviewToFront(const UIView& view) {
    const auto found = std::find_if(subviews_.begin(), subviews_.end(),
                                    [&](const auto& other) { return other.get() == &view; });
    if (found != subviews_.end() && std::next(found) != subviews_.end()) {
        std::rotate(found, std::next(found), subviews_.end());
        setNeedsComposition();
    }
}

void UIView::sendSubviewToBack(const UIView& view) {
    const auto found = std::find_if(subviews_.begin(), subviews_.end(),
                                    [&](const auto& other) { return other.get() == &view; });
    if (found != subviews_.end() && found != subviews_.begin()) {
        std::rotate(subviews_.begin(), found, std::next(found));
        setNeedsComposition();
    }
}

void UIView::removeFromSuperview() {
    if (superview_ == nullptr)
        return;
    setNeedsComposition();
    auto* from = superview_;
    const auto found = std::find_if(from->subviews_.begin(), from->subviews_.end(),
                                    [&](const auto& other) { return other.get() == this; });
    const auto self = *found;
    from->subviews_.erase(found);
    UIViewAnimationEngine::shared().endAnimationsUnder(*this);
    attachTo(nullptr);
}

void UIView::attachTo(UIView* superview) {
    superview_ = superview;
    windowDidChange(superview != nullptr ? superview->window_ : nullptr);
    if (superview != nullptr) {
        if (needsLayout_ || descendantNeedsLayout_)
            announceLayout();
        setNeedsComposition();
    }
}

void UIView::windowDidChange(UIWindow* window) {
    const bool isWindowItself = window_ != nullptr && static_cast<UIView*>(window_) == this;
    if (window_ == window || isWindowItself)
        return;
    window_ = window;
    const auto children = subviews_;
    for (const auto& child : children)
        if (child->superview_ == this)
            child->windowDidChange(window);
    didMoveToWindow();
    if (viewController_ != nullptr)
        viewController_->viewMovedToWindow(window);
}

}
