#pragma once
#include "platform/graphics/CGAffineTransform.h"
#include "platform/linux/window/AccessibleWidget.h"
#include "platform/uikit/UIAccessibilityTree.h"

#include <gtk/gtk.h>

#include <map>
#include <memory>
#include <vector>

namespace vistrel {

/// Exposes the screen to screen readers: an invisible child widget for each accessible element, in
/// reading order, those in a list or an alert inside its widget.
class AccessibleChildren {
public:
    explicit AccessibleChildren(GtkWidget* screen)
        : screen_(screen) {}

    /// Makes the children follow what can be perceived now. True when one must be allocated again.
    bool update(const std::vector<UIAccessibleView>& elements, const CGAffineTransform& toScreen);
    /// Within the screen's allocation.
    void allocate() const;
    void clear();
    /// Null when no child stands for the view.
    GtkWidget* widgetOf(const UIView& view) const;

private:
    struct Child {
        std::unique_ptr<AccessibleWidget> accessible;
        const UIView* view; ///< never dereferenced
        CGRect frame;       ///< in the parent
        bool isShown;
    };
    Child& childFor(const UIAccessibleView& seen);
    /// Puts the widget after the one that was last put into that parent.
    void arrange(GtkWidget* widget, GtkWidget* parent);

    GtkWidget* screen_;
    std::vector<std::unique_ptr<Child>> children_;
    std::map<GtkWidget*, GtkWidget*> last_; ///< by parent, while updating
};

}
