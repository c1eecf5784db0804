#include "platform/uikit/UIView.h"

#include <algorithm>
#include <array>

namespace vistrel {

namespace {

/// A view along one axis: the margins on both sides and its length.
using Axis = std::array<double, 3>;

/// Shares the growth among the flexible parts in proportion to their size, evenly when all of
/// them are zero.
void grow(Axis& parts, std::array<bool, 3> flexible, double growth) {
    double total = 0;
    int count = 0;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (flexible[i]) {
            total += parts[i];
            ++count;
        }
    }
    for (std::size_t i = 0; i < parts.size(); ++i)
        if (flexible[i])
            parts[i] += total > 0 ? growth * parts[i] / total : growth / count;
}

}

void UIView::resizeSubviews(CGSize oldSize) {
    const auto children = subviews_;
    for (const auto& child : children)
        child->resizeWithOldSuperviewSize(oldSize, state_.bounds.size);
}

void UIView::resizeWithOldSuperviewSize(CGSize oldSize, CGSize newSize) {
    const auto has = [&](unsigned bit) {
        return (autoresizingMask_ & bit) != 0;
    };
    const CGRect old = frame();
    Axis across = {old.minX(), old.size.width, oldSize.width - old.maxX()};
    Axis down = {old.minY(), old.size.height, oldSize.height - old.maxY()};
    grow(across,
         {has(UIViewAutoresizingFlexibleLeftMargin), has(UIViewAutoresizingFlexibleWidth),
          has(UIViewAutoresizingFlexibleRightMargin)},
         newSize.width - oldSize.width);
    grow(down,
         {has(UIViewAutoresizingFlexibleTopMargin), has(UIViewAutoresizingFlexibleHeight),
          has(UIViewAutoresizingFlexibleBottomMargin)},
         newSize.height - oldSize.height);
    const auto resized =
        CGRectMake(across[0], down[0], std::max(across[1], 0.0), std::max(down[1], 0.0));
    if (resized != old)
        setFrame(resized);
}

void UIView::setNeedsLayout() {
    needsLayout_ = true;
    announceLayout();
    setNeedsComposition();
}

void UIView::announceLayout() {
    for (auto* ancestor = superview_; ancestor != nullptr && !ancestor->descendantNeedsLayout_;
         ancestor = ancestor->superview_)
        ancestor->descendantNeedsLayout_ = true;
}

void UIView::layoutIfNeeded() {
    if (needsLayout_) {
        needsLayout_ = false;
        layoutSubviews();
    }
    if (!descendantNeedsLayout_)
        return;
    descendantNeedsLayout_ = false;
    const auto children = subviews_;
    for (const auto& child : children)
        child->layoutIfNeeded();
}

CGSize UIView::sizeThatFits(CGSize /*size*/) const {
    return state_.bounds.size;
}

}
