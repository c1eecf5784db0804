#include "platform/linux/window/AccessibleChildren.h"

#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIView.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

GtkAccessibleRole gtkRole(UIAccessibilityRole role) {
    switch (role) {
    case UIAccessibilityRole::Button:
        return GTK_ACCESSIBLE_ROLE_BUTTON;
    case UIAccessibilityRole::Row:
        return GTK_ACCESSIBLE_ROLE_LIST_ITEM;
    case UIAccessibilityRole::Heading:
        return GTK_ACCESSIBLE_ROLE_HEADING;
    case UIAccessibilityRole::Slider:
        return GTK_ACCESSIBLE_ROLE_SLIDER;
    case UIAccessibilityRole::Field:
        return GTK_ACCESSIBLE_ROLE_TEXT_BOX;
    case UIAccessibilityRole::ProgressBar:
        return GTK_ACCESSIBLE_ROLE_PROGRESS_BAR;
    case UIAccessibilityRole::Image:
        return GTK_ACCESSIBLE_ROLE_IMG;
    case UIAccessibilityRole::Alert:
        return GTK_ACCESSIBLE_ROLE_ALERT_DIALOG;
    default:
        return GTK_ACCESSIBLE_ROLE_LABEL;
    }
}

}

AccessibleChildren::~AccessibleChildren() {
    clear();
}

void AccessibleChildren::clear() {
    for (const auto& child : children_) {
        gtk_widget_unparent(child->widget);
        g_object_unref(child->widget);
    }
    children_.clear();
}

AccessibleChildren::Child* AccessibleChildren::find(const UIAccessibleView& seen) {
    const auto found = std::find_if(children_.begin(), children_.end(), [&seen](const auto& child) {
        return child->view.lock() == seen.view && child->element.role == seen.element.role;
    });
    return found == children_.end() ? nullptr : found->get();
}

AccessibleChildren::Child& AccessibleChildren::add(const UIAccessibleView& seen) {
    auto* widget = GTK_WIDGET(g_object_new(GTK_TYPE_DRAWING_AREA, "accessible-role",
                                           gtkRole(seen.element.role), nullptr));
    g_object_ref_sink(widget);
    gtk_widget_set_can_target(widget, FALSE);
    gtk_widget_set_focusable(widget, seen.view->canBecomeFirstResponder());
    children_.push_back(std::make_unique<Child>(
        Child{widget, seen.view, {seen.element.role, {}, {}, true}, {}, true, {}}));
    GtkEventController* focus = gtk_event_controller_focus_new();
    children_.back()->focused =
        connectSignal<void()>(focus, "enter", [weak = std::weak_ptr(seen.view)] {
            if (const auto view = weak.lock())
                UIApplication::sharedApplication().events().setFirstResponder(view);
        });
    gtk_widget_add_controller(widget, focus);
    gtk_widget_set_parent(widget, screen_);
    return *children_.back();
}

void AccessibleChildren::describe(Child& child, const UIAccessibilityElement& element) {
    auto* accessible = GTK_ACCESSIBLE(child.widget);
    if (child.element.label != element.label)
        gtk_accessible_update_property(accessible, GTK_ACCESSIBLE_PROPERTY_LABEL,
                                       element.label.c_str(), -1);
    if (child.element.value != element.value)
        gtk_accessible_update_property(accessible, GTK_ACCESSIBLE_PROPERTY_DESCRIPTION,
                                       element.value.c_str(), -1);
    if (child.element.enabled != element.enabled)
        gtk_accessible_update_state(accessible, GTK_ACCESSIBLE_STATE_DISABLED,
                                    static_cast<gboolean>(!element.enabled), -1);
    child.element = element;
}

bool AccessibleChildren::update(const std::vector<UIAccessibleView>& elements,
                                const CGAffineTransform& toScreen) {
    bool changed = false;
    for (const auto& child : children_)
        child->isShown = false;
    for (const auto& seen : elements) {
        // The page engine speaks for its own page.
        if (seen.element.role == UIAccessibilityRole::WebPage)
            continue;
        Child* child = find(seen);
        if (!child)
            child = &add(seen);
        const CGRect frame = toScreen.apply(seen.frame);
        changed |= child->frame != frame;
        child->frame = frame;
        child->isShown = true;
        describe(*child, seen.element);
    }
    const auto gone = std::stable_partition(children_.begin(), children_.end(),
                                            [](const auto& child) { return child->isShown; });
    for (auto child = gone; child != children_.end(); ++child) {
        gtk_widget_unparent((*child)->widget);
        g_object_unref((*child)->widget);
    }
    children_.erase(gone, children_.end());
    return changed;
}

void AccessibleChildren::allocate() const {
    for (const auto& child : children_) {
        int minimum = 0;
        gtk_widget_measure(child->widget, GTK_ORIENTATION_HORIZONTAL, -1, &minimum, nullptr,
                           nullptr, nullptr);
        const GtkAllocation place{
            static_cast<int>(std::lround(child->frame.minX())),
            static_cast<int>(std::lround(child->frame.minY())),
            std::max(1, static_cast<int>(std::lround(child->frame.size.width))),
            std::max(1, static_cast<int>(std::lround(child->frame.size.height)))};
        gtk_widget_size_allocate(child->widget, &place, -1);
    }
}

}
