#include "platform/uikit/UIView.h"
#include "platform/uikit/UIViewAnimationEngine.h"
#include "platform/uikit/UIWindow.h"

#include <cmath>

namespace vistrel {

CGAffineTransform ViewState::toSuperview() const {
    const CGPoint middle = {bounds.midX(), bounds.midY()};
    if (transform.isIdentity())
        return CGAffineTransformMakeTranslation(center.x - middle.x, center.y - middle.y);
    return CGAffineTransformMakeTranslation(-middle.x, -middle.y)
        .concat(transform)
        .concat(CGAffineTransformMakeTranslation(center.x, center.y));
}

void UIView::changeState(const ViewState& next) {
    if (next == state_)
        return;
    const ViewState old = state_;
    state_ = next;
    UIViewAnimationEngine::shared().stateDidChange(*this, old, state_);
    setNeedsComposition();
}

void UIView::changeBounds(const CGRect& bounds, CGPoint center) {
    const CGSize oldSize = state_.bounds.size;
    ViewState next = state_;
    next.bounds = bounds;
    next.center = center;
    changeState(next);
    if (oldSize == bounds.size)
        return;
    if (autoresizesSubviews_)
        resizeSubviews(oldSize);
    setNeedsLayout();
    if (drawsContent())
        setNeedsDisplay();
}

CGRect UIView::frame() const {
    if (state_.transform.isIdentity()) {
        const auto& size = state_.bounds.size;
        return CGRectMake(state_.center.x - size.width / 2, state_.center.y - size.height / 2,
                          size.width, size.height);
    }
    return state_.toSuperview().apply(state_.bounds);
}

void UIView::setFrame(const CGRect& frame) {
    CGSize size = frame.size;
    if (!state_.transform.isIdentity()) {
        CGAffineTransform turned = state_.transform;
        turned.tx = 0;
        turned.ty = 0;
        size = turned.inverted().apply(CGRect{{0, 0}, frame.size}).size;
    }
    const CGPoint center = {frame.midX() - state_.transform.tx, frame.midY() - state_.transform.ty};
    changeBounds({state_.bounds.origin, size}, center);
}

void UIView::setBounds(const CGRect& bounds) {
    changeBounds(bounds, state_.center);
}

void UIView::setCenter(CGPoint center) {
    ViewState next = state_;
    next.center = center;
    changeState(next);
}

void UIView::setTransform(const CGAffineTransform& transform) {
    ViewState next = state_;
    next.transform = transform;
    changeState(next);
}

void UIView::setAlpha(double alpha) {
    ViewState next = state_;
    next.alpha = alpha;
    changeState(next);
}

void UIView::setBackgroundColor(const UIColor& color) {
    ViewState next = state_;
    next.backgroundColor = color;
    changeState(next);
}

CGAffineTransform UIView::transformToRoot() const {
    auto result = state_.toSuperview();
    for (const auto* ancestor = superview_; ancestor != nullptr; ancestor = ancestor->superview_) {
        // The position of the root itself means nothing.
        if (ancestor->superview_ != nullptr)
            result = result.concat(ancestor->state_.toSuperview());
    }
    return superview_ != nullptr ? result : CGAffineTransform{};
}

CGPoint UIView::convertPointToView(CGPoint point, const UIView* view) const {
    const auto* target = view != nullptr ? view : static_cast<const UIView*>(window_);
    const auto inRoot = transformToRoot().apply(point);
    return target != nullptr ? target->transformToRoot().inverted().apply(inRoot) : inRoot;
}

CGPoint UIView::convertPointFromView(CGPoint point, const UIView* view) const {
    const auto* source = view != nullptr ? view : static_cast<const UIView*>(window_);
    const auto inRoot = source != nullptr ? source->transformToRoot().apply(point) : point;
    return transformToRoot().inverted().apply(inRoot);
}

CGRect UIView::convertRectToView(const CGRect& rect, const UIView* view) const {
    const auto* target = view != nullptr ? view : static_cast<const UIView*>(window_);
    auto conversion = transformToRoot();
    if (target != nullptr)
        conversion = conversion.concat(target->transformToRoot().inverted());
    return conversion.apply(rect);
}

const ViewState& UIView::presentationState() const {
    const auto* moving = UIViewAnimationEngine::shared().shownState(*this);
    return moving != nullptr ? *moving : state_;
}

}
