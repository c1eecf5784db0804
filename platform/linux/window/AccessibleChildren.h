#pragma once
#include "platform/graphics/CGAffineTransform.h"
#include "platform/linux/NativeCallback.h"
#include "platform/uikit/UIAccessibilityTree.h"

#include <gtk/gtk.h>

#include <memory>
#include <string>
#include <vector>

namespace vistrel {

/// Exposes the screen to screen readers: an invisible child widget for each accessible element,
/// with its role, name and frame. Children ignore the pointer and carry the keyboard focus of their
/// view.
class AccessibleChildren {
public:
    explicit AccessibleChildren(GtkWidget* screen)
        : screen_(screen) {}
    ~AccessibleChildren();
    AccessibleChildren(const AccessibleChildren&) = delete;
    AccessibleChildren& operator=(const AccessibleChildren&) = delete;

    /// Makes the children follow what can be perceived now. True when one must be allocated again.
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
        SignalConnection focused;
    };
    Child* find(const UIAccessibleView& seen);
    Child& add(const UIAccessibleView& seen);
    static void describe(Child& child, const UIAccessibilityElement& element);

    GtkWidget* screen_;
    std::vector<std::unique_ptr<Child>> children_;
};

}
