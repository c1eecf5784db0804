#pragma once
#include "platform/uikit/SceneVisitor.h"

#include <gtk/gtk.h>

#include <vector>

namespace vistrel {
class GtkForeignContent;

/// Finds where the view tree shows foreign widgets: a walk that draws nothing.
class ForeignPlacement : public SceneVisitor {
public:
    struct Place {
        GtkForeignContent* content;
        GtkWidget* widget;
        CGRect rect; ///< in the view's points
        CGAffineTransform toScreen;
    };

    const std::vector<Place>& places() const { return places_; }

    void pushTransform(const CGAffineTransform& transform) override;
    void pushClip(const CGRect& rect) override;
    void pushOpacity(double opacity) override;
    void pop() override;
    void fillColor(const CGRect&, const UIColor&) override {}
    void drawPicture(const CGRect&, const std::shared_ptr<const Bitmap>&) override {}
    void drawForeign(const CGRect& rect, host::ForeignContent& content) override;

private:
    std::vector<Place> places_;
    std::vector<CGAffineTransform> transforms_{CGAffineTransform{}};
};

}
