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

    /// The effect of the pushes so far. Upright transforms are not written into the snapshot but
    /// applied to what is drawn: the renderer finds what has changed only outside of rotations.
    struct State {
        CGAffineTransform toSnapshot; ///< to the coordinates that the snapshot has here
        CGAffineTransform toScreen;   ///< from those to the widget's
        bool isTranslucent = false;
        bool needsPop = false;     ///< of a clip or an opacity
        bool needsRestore = false; ///< of a transform around it
    };
    State& push();
    void appendNode(GskRenderNode* node, const CGAffineTransform& toSnapshot);
    void drawMovingPicture(const CGRect& rect, ForeignPicture& picture);

    GtkWidget* screen_;
    GtkSnapshot* snapshot_;
    PictureNodes& nodes_;
    bool sawForeign_ = false;
    bool isCovered_ = false;             ///< the step that is being drawn
    std::vector<State> states_{State{}}; ///< innermost last
};

/// The toolkit's transform for an affine one; the caller owns it (null for the identity).
GskTransform* makeGskTransform(const CGAffineTransform& transform);

}
