#pragma once
#include "platform/graphics/CGGeometry.h"
#include "platform/uikit/UIAccessibility.h"

#include <memory>
#include <vector>

namespace vistrel {
class UIView;

/// One element that is perceivable now.
struct UIAccessibleView {
    UIAccessibilityElement element;
    CGRect frame; ///< what can be seen of it, in the root's coordinates (the screen's: points)
    std::shared_ptr<UIView> view;
    /// The list or alert that it is in; null for none.
    std::shared_ptr<UIView> container{};
};

/// The elements under `root` in reading order: top to bottom, then left to right, with what is
/// inside an element after it. Leaves out what is hidden, fully transparent or clipped away, what
/// lies under an alert or sheet, and the parts of a button (it speaks for them) or of a row that
/// take no input.
std::vector<UIAccessibleView> accessibilityTree(UIView& root);

/// The views under `root` that can have the focus, in the same order; those that a list or another
/// scroll view clips away are among them.
std::vector<std::shared_ptr<UIView>> focusOrder(UIView& root);

}
