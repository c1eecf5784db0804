#include "platform/uikit/UIAccessibilityTree.h"

#include "platform/uikit/UIView.h"
#include "platform/uikit/UIWindow.h"

namespace vistrel {

namespace {

constexpr double kLeastVisibleAlpha = 0.01;
constexpr double kLeastVisibleLength = 1;

bool isModal(const UIView& view) {
    const auto* window = dynamic_cast<const UIWindow*>(&view);
    return window != nullptr && window->windowLevel() >= UIWindowLevelAlert &&
           window->isUserInteractionEnabled();
}

bool canBeOperated(UIAccessibilityRole role) {
    return role == UIAccessibilityRole::Button || role == UIAccessibilityRole::Slider ||
           role == UIAccessibilityRole::Field;
}

class Collector {
public:
    std::vector<UIAccessibleView> take() { return std::move(found_); }

    void collectChildren(const UIView& view, const CGRect& visible, bool insideRow,
                         const CGAffineTransform& toRoot) {
        const auto& children = view.subviews();
        auto first = children.begin();
        for (auto child = children.begin(); child != children.end(); ++child) {
            if (isModal(**child) && isPerceptible(**child)) {
                first = child;
            }
        }
        for (; first != children.end(); ++first) {
            collect(*first, visible, insideRow, toRoot);
        }
    }

private:
    static bool isPerceptible(const UIView& view) {
        return !view.isHidden() && view.alpha() > kLeastVisibleAlpha;
    }

    void collect(const std::shared_ptr<UIView>& view, const CGRect& visible, bool insideRow,
                 const CGAffineTransform& parentToRoot) {
        if (!isPerceptible(*view)) {
            return;
        }
        const auto toRoot = view->placement().concat(parentToRoot);
        const auto seen = CGRectIntersection(toRoot.apply(view->bounds()), visible);
        const auto inside = view->clipsToBounds() ? seen : visible;
        if (inside.isEmpty()) {
            return;
        }
        const auto element = view->accessibilityElement();
        const bool isLargeEnough =
            seen.size.width >= kLeastVisibleLength && seen.size.height >= kLeastVisibleLength;
        const bool isPart = insideRow && !canBeOperated(element.role);
        if (element.role != UIAccessibilityRole::None && isLargeEnough && !isPart) {
            found_.push_back({element, seen, view});
        }
        if (element.role == UIAccessibilityRole::Button) {
            return;
        }
        collectChildren(*view, inside, insideRow || element.role == UIAccessibilityRole::Row,
                        toRoot);
    }

    std::vector<UIAccessibleView> found_;
};

}

std::vector<UIAccessibleView> accessibilityTree(UIView& root) {
    root.layoutIfNeeded();
    Collector collector;
    collector.collectChildren(root, root.bounds(), false, {});
    return collector.take();
}

}
