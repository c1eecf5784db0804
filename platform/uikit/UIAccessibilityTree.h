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
};

/// The elements under `root`, back to front, without what is hidden, fully transparent or
/// clipped away, what lies under an alert or sheet, and the parts of a button (it speaks
/// for them) or of a row that take no input.
std::vector<UIAccessibleView> accessibilityTree(UIView& root);

}
