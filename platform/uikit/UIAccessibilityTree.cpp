#include "platform/uikit/UIAccessibilityTree.h"

#include "platform/uikit/UITableView.h"
#include "platform/uikit/UITableViewCell.h"
#include "platform/uikit/UIWindow.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vistrel {

namespace {

constexpr double kLeastVisibleAlpha = 0.01;
constexpr double kLeastVisibleLength = 1;

bool isModal(const UIView& view) {
    const auto* window = dynamic_cast<const UIWindow*>(&view);
    return window != nullptr && window->windowLevel() >= UIWindowLevelAlert &&
           window->isUserInteractionEnabled();
}

bool isPerceptible(const UIView& view) {
    return !view.isHidden() && view.alpha() > kLeastVisibleAlpha;
}

bool canBeOperated(UIAccessibilityRole role) {
    return role == UIAccessibilityRole::Button || role == UIAccessibilityRole::Slider ||
           role == UIAccessibilityRole::Field;
}

/// A view and what is found inside it.
struct Node {
    UIAccessibleView seen;
    std::vector<Node> inside;
};

/// Lines from top to bottom, each from left to right. What begins above the middle of a line's
/// first element belongs to that line.
void sortAsRead(std::vector<Node>& nodes) {
    const auto top = [](const Node& node) {
        return node.seen.frame.minY();
    };
    const auto left = [](const Node& node) {
        return node.seen.frame.minX();
    };
    std::ranges::stable_sort(nodes, {}, top);
    for (auto line = nodes.begin(); line != nodes.end();) {
        const double middle = line->seen.frame.midY();
        const auto next = std::find_if(std::next(line), nodes.end(),
                                       [&](const Node& node) { return top(node) >= middle; });
        std::ranges::stable_sort(line, next, {}, left);
        line = next;
    }
}

bool isContainer(UIAccessibilityRole role) {
    return role == UIAccessibilityRole::List || role == UIAccessibilityRole::Alert;
}

void flatten(std::vector<Node>& nodes, const std::shared_ptr<UIView>& container,
             std::vector<UIAccessibleView>& into) {
    sortAsRead(nodes);
    for (Node& node : nodes) {
        node.seen.container = container;
        const auto inner = isContainer(node.seen.element.role) ? node.seen.view : container;
        into.push_back(std::move(node.seen));
        flatten(node.inside, inner, into);
    }
}

/// Says of a row which one it is.
void placeInList(UIAccessibleView& seen) {
    const auto* table = dynamic_cast<const UITableView*>(seen.view->superview());
    const auto* cell = dynamic_cast<const UITableViewCell*>(seen.view.get());
    const auto path = table && cell ? table->indexPathForCell(*cell) : std::nullopt;
    if (path && seen.element.value.empty())
        seen.element.value = std::to_string(path->row + 1) + " / " +
                             std::to_string(table->numberOfRowsInSection(path->section));
}

/// Gathers what can be perceived, or what can have the focus.
class Collector {
public:
    enum class Wanted { Perceived, Focusable };
    explicit Collector(Wanted wanted)
        : wanted_(wanted) {}

    std::vector<UIAccessibleView> collectBelow(const UIView& root) const {
        std::vector<Node> found;
        collectChildren(root, {root.bounds(), {}, false}, found);
        std::vector<UIAccessibleView> ordered;
        flatten(found, nullptr, ordered);
        return ordered;
    }

private:
    struct Surroundings {
        CGRect visible; ///< in the root's coordinates
        CGAffineTransform toRoot;
        bool insideRow;
    };

    void collectChildren(const UIView& view, const Surroundings& around,
                         std::vector<Node>& found) const {
        const auto& children = view.subviews();
        auto first = children.begin();
        for (auto child = children.begin(); child != children.end(); ++child)
            if (isModal(**child) && isPerceptible(**child))
                first = child;
        for (; first != children.end(); ++first)
            collect(*first, around, found);
    }

    bool clips(const UIView& view) const {
        return wanted_ == Wanted::Perceived && view.clipsToBounds();
    }

    bool isWanted(const UIView& view, const UIAccessibilityElement& element, CGSize seen,
                  bool insideRow) const {
        if (wanted_ == Wanted::Focusable)
            return view.canBecomeFirstResponder();
        const bool isPart = insideRow && !canBeOperated(element.role);
        return element.role != UIAccessibilityRole::None && !isPart &&
               seen.width >= kLeastVisibleLength && seen.height >= kLeastVisibleLength;
    }

    void collect(const std::shared_ptr<UIView>& view, const Surroundings& around,
                 std::vector<Node>& found) const {
        if (!isPerceptible(*view) ||
            (wanted_ == Wanted::Focusable && !view->isUserInteractionEnabled()))
            return;
        const auto toRoot = view->placement().concat(around.toRoot);
        const auto whole = toRoot.apply(view->bounds());
        const auto seen =
            wanted_ == Wanted::Focusable ? whole : CGRectIntersection(whole, around.visible);
        const auto inside = clips(*view) ? seen : around.visible;
        if (inside.isEmpty())
            return;
        const auto element = view->accessibilityElement();
        auto* into = &found;
        if (isWanted(*view, element, seen.size, around.insideRow)) {
            found.push_back({{element, seen, view}, {}});
            placeInList(found.back().seen);
            into = &found.back().inside;
        }
        if (element.role != UIAccessibilityRole::Button)
            collectChildren(
                *view,
                {inside, toRoot, around.insideRow || element.role == UIAccessibilityRole::Row},
                *into);
    }

    Wanted wanted_;
};

}

std::vector<UIAccessibleView> accessibilityTree(UIView& root) {
    root.layoutIfNeeded();
    return Collector(Collector::Wanted::Perceived).collectBelow(root);
}

std::vector<std::shared_ptr<UIView>> focusOrder(UIView& root) {
    root.layoutIfNeeded();
    std::vector<std::shared_ptr<UIView>> views;
    for (auto& found : Collector(Collector::Wanted::Focusable).collectBelow(root))
        views.push_back(std::move(found.view));
    return views;
}

}
