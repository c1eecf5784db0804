#include "platform/linux/window/AccessibleChildren.h"

#include "platform/host/ForeignContent.h"
#include "platform/linux/window/GtkForeignContent.h"
#include "platform/uikit/UIView.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

void AccessibleChildren::clear() {
    // Rows go before their lists.
    while (!children_.empty())
        children_.pop_back();
}

AccessibleChildren::Child& AccessibleChildren::childFor(const UIAccessibleView& seen) {
    const auto found = std::ranges::find_if(children_, [&seen](const auto& child) {
        return child->accessible->standsFor(*seen.view, seen.element.role);
    });
    if (found != children_.end())
        return **found;
    children_.push_back(std::make_unique<Child>(
        Child{std::make_unique<AccessibleWidget>(seen.view, seen.element.role),
              seen.view.get(),
              {},
              true}));
    return *children_.back();
}

GtkWidget* AccessibleChildren::widgetOf(const UIView& view) const {
    const auto found = std::ranges::find(children_, &view, &Child::view);
    return found == children_.end() ? nullptr : (*found)->accessible->widget();
}

void AccessibleChildren::arrange(GtkWidget* widget, GtkWidget* parent) {
    GtkWidget*& previous = last_[parent];
    if (gtk_widget_get_parent(widget) && gtk_widget_get_parent(widget) != parent)
        gtk_widget_unparent(widget);
    if (gtk_widget_get_parent(widget) != parent || gtk_widget_get_prev_sibling(widget) != previous)
        gtk_widget_insert_after(widget, parent, previous);
    previous = widget;
}

bool AccessibleChildren::update(const std::vector<UIAccessibleView>& elements,
                                const CGAffineTransform& toScreen) {
    bool changed = false;
    last_.clear();
    for (const auto& child : children_)
        child->isShown = false;
    for (const auto& seen : elements) {
        if (seen.element.role == UIAccessibilityRole::WebPage) {
            // The page engine speaks for its own page.
            auto* page = dynamic_cast<GtkForeignContent*>(seen.view->foreignContent());
            if (page && page->widget() && gtk_widget_get_parent(page->widget()) == screen_)
                arrange(page->widget(), screen_);
            continue;
        }
        GtkWidget* parent = seen.container ? widgetOf(*seen.container) : screen_;
        Child& child = childFor(seen);
        CGRect frame = toScreen.apply(seen.frame);
        if (seen.container) {
            const auto container = std::ranges::find(children_, seen.container.get(), &Child::view);
            frame = frame.offsetBy(-(*container)->frame.minX(), -(*container)->frame.minY());
        }
        changed |= child.frame != frame || !gtk_widget_get_parent(child.accessible->widget());
        child.frame = frame;
        child.isShown = true;
        child.accessible->describe(seen.element);
        arrange(child.accessible->widget(), parent);
    }
    // Backwards: rows go before their lists.
    for (auto child = children_.rbegin(); child != children_.rend(); ++child)
        if (!(*child)->isShown)
            (*child)->accessible.reset();
    std::erase_if(children_, [](const auto& child) { return !child->accessible; });
    return changed;
}

void AccessibleChildren::allocate() const {
    for (const auto& child : children_) {
        GtkWidget* widget = child->accessible->widget();
        int width = 0;
        int height = 0;
        // A widget must have been measured before it is allocated.
        gtk_widget_measure(widget, GTK_ORIENTATION_HORIZONTAL, -1, &width, nullptr, nullptr,
                           nullptr);
        gtk_widget_measure(widget, GTK_ORIENTATION_VERTICAL, -1, &height, nullptr, nullptr,
                           nullptr);
        const GtkAllocation place{
            static_cast<int>(std::lround(child->frame.minX())),
            static_cast<int>(std::lround(child->frame.minY())),
            std::max({1, width, static_cast<int>(std::lround(child->frame.size.width))}),
            std::max({1, height, static_cast<int>(std::lround(child->frame.size.height))})};
        gtk_widget_size_allocate(widget, &place, -1);
    }
}

}
