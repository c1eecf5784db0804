#pragma once
#include "platform/graphics/CGGeometry.h"
#include "platform/uikit/UIAccessibility.h"

#include <memory>
#include <vector>

namespace vistrel {
class UIView;

/// One element that can be perceived now.
struct UIAccessibleView {
    UIAccessibilityElement element;
    CGRect frame; ///< what can be seen of it, in the root's coordinates (the screen's: points)
    std::shared_ptr<UIView> view;
};

/// The elements under `root`, back to front. Left out is what is hidden, faded to nothing or
/// clipped away, what lies under an alert's or sheet's window, and the parts of a button (it speaks
/// for them) or of a row that cannot be operated.
std::vector<UIAccessibleView> accessibilityTree(UIView& root);

}
