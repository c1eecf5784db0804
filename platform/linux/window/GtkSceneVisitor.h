#pragma once
#include "platform/graphics/Bitmap.h"
#include "platform/linux/window/PictureNodes.h"
#include "platform/uikit/SceneVisitor.h"

#include <gtk/gtk.h>

#include <vector>

namespace vistrel {

/// Writes the view tree into a GTK snapshot: one render node a piece, the nodes of finished
/// pictures kept from frame to frame.
class GtkSceneVisitor : public SceneVisitor {
public:
    /// `screen` is the widget whose children the foreign widgets are; the snapshot stands at its
    /// coordinates.
    /// `covered` says of each fill, gradient and picture of the walk whether to leave it out.
    GtkSceneVisitor(GtkWidget* screen, GtkSnapshot* snapshot, PictureNodes& nodes,
                    std::vector<bool> covered);

    void pushTransform(const CGAffineTransform& transform) override;
    void pushClip(const CGRect& rect) override;
    void pushOpacity(double opacity) override;
    void pop() override;
    void fillColor(const CGRect& rect, const UIColor& color) override;
    void fillGradient(const CGRect& rect, const CGGradient& gradient) override;
    void drawPicture(const CGRect& rect, const std::shared_ptr<const Bitmap>& picture) override;
    void drawForeign(const CGRect& rect, host::ForeignContent& content) override;

    /// Whether the walk met foreign content.
    bool sawForeign() const { return sawForeign_; }

private:
    bool isNextCovered() { return covered_[paints_++]; }

    enum class Pushed { Transform, Node };

    GtkWidget* screen_;
    GtkSnapshot* snapshot_;
    PictureNodes& nodes_;
    std::vector<bool> covered_;
    std::size_t paints_ = 0; ///< so far
    bool sawForeign_ = false;
    std::vector<Pushed> pushed_;
    std::vector<CGAffineTransform> transforms_{
        CGAffineTransform{}}; ///< to the widget, innermost last
};

/// The toolkit's transform for an affine one; the caller owns it (null for the identity).
GskTransform* makeGskTransform(const CGAffineTransform& transform);

}
