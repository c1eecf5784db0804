#pragma once
#include "platform/graphics/Bitmap.h"
#include "platform/linux/window/PictureNodes.h"
#include "platform/uikit/SceneVisitor.h"

#include <gtk/gtk.h>

#include <vector>

namespace vistrel {
class ForeignPicture;
class SceneRecording;

/// Writes the view tree into a GTK snapshot, one render node per piece. Nodes of finished pictures
/// are kept between frames.
class GtkSceneVisitor : public SceneVisitor {
public:
    /// `screen` is the parent of the foreign widgets; the snapshot uses its coordinates.
    GtkSceneVisitor(GtkWidget* screen, GtkSnapshot* snapshot, PictureNodes& nodes);

    /// Draws everything that the recording has not left out.
    void draw(const SceneRecording& recording);

    void pushTransform(const CGAffineTransform& transform) override;
    void pushClip(const CGRect& rect) override;
    void pushOpacity(double opacity) override;
    void pop() override;
    void fillColor(const CGRect& rect, const UIColor& color) override;
    void drawPicture(const CGRect& rect, const std::shared_ptr<const Bitmap>& picture) override;
    void drawForeign(const CGRect& rect, host::ForeignContent& content) override;

    /// Whether the walk met foreign content.
    bool sawForeign() const { return sawForeign_; }

private:
    void paintIntoOneNode(const SceneRecording& recording, std::size_t clip);

    struct Pushed {
        enum class Kind { Transform, Clip, Opacity };
        Kind kind;
        CGAffineTransform transform;
        CGRect clip;
        double opacity = 1;
    };
    void enter(const Pushed& pushed);
    void leave(const Pushed& pushed);
    void drawMovingPicture(const CGRect& rect, ForeignPicture& picture);
    bool isTranslucent() const;

    GtkWidget* screen_;
    GtkSnapshot* snapshot_;
    PictureNodes& nodes_;
    bool sawForeign_ = false;
    bool isCovered_ = false; ///< the step that is being drawn
    std::vector<Pushed> pushed_;
    std::vector<CGAffineTransform> transforms_{
        CGAffineTransform{}}; ///< to the widget, innermost last
};

/// The toolkit's transform for an affine one; the caller owns it (null for the identity).
GskTransform* makeGskTransform(const CGAffineTransform& transform);

}
