#pragma once
#include "platform/graphics/CGAffineTransform.h"
#include "platform/graphics/CGGeometry.h"

#include <gtk/gtk.h>

#include <vector>

namespace vistrel {
class ForeignPlacement;

/// The foreign widgets that are currently children of the screen. Adds and removes them as the view
/// tree shows and hides them.
class ForeignChildren {
public:
    explicit ForeignChildren(GtkWidget* screen)
        : screen_(screen) {}
    ~ForeignChildren();
    ForeignChildren(const ForeignChildren&) = delete;
    ForeignChildren& operator=(const ForeignChildren&) = delete;

    /// Compares with what the last walk found. True when something has to be allocated again.
    bool update(const ForeignPlacement& placement, double pixelsPerPoint);
    /// Within the screen's allocation.
    void allocate() const;
    /// Whether the widget, or one inside it, has the keyboard focus.
    bool hasFocus() const;
    /// Removes all children.
    void clear();
    bool isEmpty() const { return children_.empty(); }

private:
    struct Child {
        GtkWidget* widget;
        int width;
        int height;
        CGAffineTransform transform;
        bool isShown;
    };
    Child* find(GtkWidget* widget);
    static void release(Child& child);

    GtkWidget* screen_;
    std::vector<Child> children_;
};

}
