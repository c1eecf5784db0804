#pragma once
#include "platform/linux/NativeCallback.h"
#include "platform/uikit/UIAccessibility.h"

#include <gtk/gtk.h>

#include <memory>

namespace vistrel {
class UIView;

/// The invisible widget that stands for one view towards screen readers: its role, name, value and
/// actions. It never takes the pointer and draws nothing.
class AccessibleWidget {
public:
    AccessibleWidget(const std::shared_ptr<UIView>& view, UIAccessibilityRole role);
    ~AccessibleWidget();
    AccessibleWidget(const AccessibleWidget&) = delete;
    AccessibleWidget& operator=(const AccessibleWidget&) = delete;

    GtkWidget* widget() const { return widget_; }
    bool standsFor(const UIView& view, UIAccessibilityRole role) const;
    void describe(const UIAccessibilityElement& element);

private:
    static GType plainType();
    static void installActions(gpointer widgetClass, gpointer);
    static void act(GtkWidget* widget, const char* action, GVariant* parameter);
    void listen();
    void describeRange(const UIAccessibilityRange& range);
    void valueChanged();

    GtkWidget* widget_;
    std::weak_ptr<UIView> view_;
    UIAccessibilityElement element_;
    SignalConnection focused_;
    SignalConnection valueChanged_;
};

}
