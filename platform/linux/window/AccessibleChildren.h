#pragma once
#include "platform/graphics/CGAffineTransform.h"
#include "platform/uikit/UIAccessibilityTree.h"

#include <gtk/gtk.h>

#include <memory>
#include <string>
#include <vector>

namespace vistrel {

/// What a screen reader finds of the screen: for each accessible element one invisible child widget
/// with its role, name and place. It takes no pointer; it carries the keyboard focus of its view.
class AccessibleChildren {
public:
    explicit AccessibleChildren(GtkWidget* screen)
        : screen_(screen) {}
    ~AccessibleChildren();
    AccessibleChildren(const AccessibleChildren&) = delete;
    AccessibleChildren& operator=(const AccessibleChildren&) = delete;

    /// Makes the children follow what can be perceived now. True when one has to be placed anew.
    bool update(const std::vector<UIAccessibleView>& elements, const CGAffineTransform& toScreen);
    /// Within the screen's allocation.
    void allocate() const;
    void clear();

private:
    struct Child {
        GtkWidget* widget;
        std::weak_ptr<UIView> view;
        UIAccessibilityElement element;
        CGRect frame; ///< in the screen widget
        bool isShown;
    };
    Child* find(const UIAccessibleView& seen);
    Child& add(const UIAccessibleView& seen);
    static void describe(Child& child, const UIAccessibilityElement& element);
    static void focused(GtkEventControllerFocus* controller, gpointer self);

    GtkWidget* screen_;
    std::vector<std::unique_ptr<Child>> children_;
};

}
