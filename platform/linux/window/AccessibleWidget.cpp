#include "platform/linux/window/AccessibleWidget.h"

#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIKey.h"
#include "platform/uikit/UIView.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace vistrel {

namespace {

constexpr const char* kOwner = "vistrel-accessible";
constexpr const char* kPress = "accessible.press";
constexpr const char* kNext = "accessible.next";
constexpr const char* kPrevious = "accessible.previous";
constexpr double kSteps = 20; ///< of a slider from end to end

GtkAccessibleRole gtkRole(UIAccessibilityRole role) {
    switch (role) {
    case UIAccessibilityRole::Button:
        return GTK_ACCESSIBLE_ROLE_BUTTON;
    case UIAccessibilityRole::Row:
        return GTK_ACCESSIBLE_ROLE_LIST_ITEM;
    case UIAccessibilityRole::List:
        return GTK_ACCESSIBLE_ROLE_LIST;
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

bool isPressed(UIAccessibilityRole role) {
    return role == UIAccessibilityRole::Button || role == UIAccessibilityRole::Row ||
           role == UIAccessibilityRole::Field || role == UIAccessibilityRole::Image;
}

}

GType AccessibleWidget::plainType() {
    static const GType type = g_type_register_static_simple(
        GTK_TYPE_WIDGET, "VistrelAccessible", sizeof(GtkWidgetClass), installActions,
        sizeof(GtkWidget), nullptr, static_cast<GTypeFlags>(0));
    return type;
}

void AccessibleWidget::installActions(gpointer widgetClass, gpointer) {
    for (const char* action : {kPress, kNext, kPrevious})
        gtk_widget_class_install_action(GTK_WIDGET_CLASS(widgetClass), action, nullptr, act);
}

AccessibleWidget::AccessibleWidget(const std::shared_ptr<UIView>& view, UIAccessibilityRole role)
    : view_(view) {
    element_.role = role;
    // The toolkit gives readers a value to read and set only for widgets of these types.
    if (role == UIAccessibilityRole::Slider)
        widget_ = gtk_scale_new_with_range(GTK_ORIENTATION_HORIZONTAL, 0, 1, 1 / kSteps);
    else if (role == UIAccessibilityRole::ProgressBar)
        widget_ = gtk_progress_bar_new();
    else
        widget_ = GTK_WIDGET(g_object_new(plainType(), "accessible-role", gtkRole(role), nullptr));
    g_object_ref_sink(widget_);
    g_object_set_data(G_OBJECT(widget_), kOwner, this);
    gtk_widget_set_can_target(widget_, FALSE);
    gtk_widget_set_focusable(
        widget_, static_cast<gboolean>(isPressed(role) || view->canBecomeFirstResponder()));
    if (G_OBJECT_TYPE(widget_) == plainType()) {
        gtk_widget_action_set_enabled(widget_, kPress, static_cast<gboolean>(isPressed(role)));
        const bool isList = role == UIAccessibilityRole::List;
        gtk_widget_action_set_enabled(widget_, kNext, static_cast<gboolean>(isList));
        gtk_widget_action_set_enabled(widget_, kPrevious, static_cast<gboolean>(isList));
    }
    // Without a name readers would be told the type's.
    gtk_accessible_update_property(GTK_ACCESSIBLE(widget_), GTK_ACCESSIBLE_PROPERTY_LABEL, "", -1);
    listen();
}

AccessibleWidget::~AccessibleWidget() {
    g_object_set_data(G_OBJECT(widget_), kOwner, nullptr);
    if (gtk_widget_get_parent(widget_))
        gtk_widget_unparent(widget_);
    g_object_unref(widget_);
}

void AccessibleWidget::listen() {
    GtkEventController* focus = gtk_event_controller_focus_new();
    focused_ = connectSignal<void()>(focus, "enter", [this] {
        const auto view = view_.lock();
        auto& events = UIApplication::sharedApplication().events();
        // The toolkit's focus also follows the keyboard to a part of the view that has the keys, as
        // to a question's button; they stay with the question.
        if (view && view->canBecomeFirstResponder() && events.focusedPart() != view)
            events.setFirstResponder(view);
    });
    gtk_widget_add_controller(widget_, focus);
    if (GTK_IS_RANGE(widget_))
        valueChanged_ = connectSignal<void()>(widget_, "value-changed", [this] { valueChanged(); });
}

bool AccessibleWidget::standsFor(const UIView& view, UIAccessibilityRole role) const {
    return view_.lock().get() == &view && element_.role == role;
}

void AccessibleWidget::act(GtkWidget* widget, const char* action, GVariant* /*parameter*/) {
    const auto* self = static_cast<AccessibleWidget*>(g_object_get_data(G_OBJECT(widget), kOwner));
    const auto view = self ? self->view_.lock() : nullptr;
    if (!view)
        return;
    if (std::string_view(action) == kPress)
        view->accessibilityActivate();
    else if (std::string_view(action) == kNext)
        view->keyPressed({.code = UIKeyCode::PageDown, .text = {}});
    else
        view->keyPressed({.code = UIKeyCode::PageUp, .text = {}});
}

void AccessibleWidget::valueChanged() {
    const auto view = view_.lock();
    const double value = gtk_range_get_value(GTK_RANGE(widget_));
    if (view && element_.range && value != element_.range->now) {
        element_.range->now = value;
        view->accessibilitySetValue(value);
    }
}

void AccessibleWidget::describeRange(const UIAccessibilityRange& range) {
    // Before the widget is changed, because that is reported as if the user had done it.
    element_.range = range;
    if (GTK_IS_PROGRESS_BAR(widget_)) {
        gtk_progress_bar_set_fraction(GTK_PROGRESS_BAR(widget_), range.now);
        return;
    }
    if (range.maximum > range.minimum)
        gtk_range_set_range(GTK_RANGE(widget_), range.minimum, range.maximum);
    gtk_range_set_value(GTK_RANGE(widget_), range.now);
}

void AccessibleWidget::describe(const UIAccessibilityElement& element) {
    auto* accessible = GTK_ACCESSIBLE(widget_);
    if (element_.label != element.label)
        gtk_accessible_update_property(accessible, GTK_ACCESSIBLE_PROPERTY_LABEL,
                                       element.label.c_str(), -1);
    if (element_.value != element.value)
        gtk_accessible_update_property(accessible, GTK_ACCESSIBLE_PROPERTY_DESCRIPTION,
                                       element.value.c_str(), -1);
    if (element_.enabled != element.enabled)
        gtk_accessible_update_state(accessible, GTK_ACCESSIBLE_STATE_DISABLED,
                                    static_cast<gboolean>(!element.enabled), -1);
    if (element.range && element.range != element_.range)
        describeRange(*element.range);
    element_ = element;
}

}
