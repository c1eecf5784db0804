#pragma once
#include "platform/uikit/SceneVisitor.h"

#include <cairo.h>

#include <vector>

namespace vistrel {

/// A walk that draws nothing: finds which of the tree's fills, gradients and pictures later opaque
/// ones hide altogether. Lists lie over their backgrounds, bars over the window: painting what
/// nobody sees costs the software renderer as much as painting the rest.
class CoveredPaints : public SceneVisitor {
public:
    /// `pixelsPerUnit`: device pixels in a unit of what the outermost transform leads to.
    explicit CoveredPaints(double pixelsPerUnit);

    void pushTransform(const CGAffineTransform& transform) override;
    void pushClip(const CGRect& rect) override;
    void pushOpacity(double opacity) override;
    void pop() override;
    void fillColor(const CGRect& rect, const UIColor& color) override;
    void fillGradient(const CGRect& rect, const CGGradient& gradient) override;
    void drawPicture(const CGRect& rect, const std::shared_ptr<const Bitmap>& picture) override;
    /// What foreign content shows is not known here: it hides nothing and is not counted.
    void drawForeign(const CGRect&, host::ForeignContent&) override {}

    /// For each fill, gradient and picture, in the order of the walk.
    std::vector<bool> find() const;

private:
    struct State {
        CGAffineTransform toDevice;
        cairo_rectangle_int_t clip; ///< whole pixels in which something may be painted
        cairo_rectangle_int_t full; ///< pixels that the clip leaves whole
        bool isSolid;               ///< no opacity, and no clip that is not an upright rectangle
    };
    struct Paint {
        cairo_rectangle_int_t touched; ///< all pixels that it may change
        cairo_rectangle_int_t hidden;  ///< pixels of which it leaves nothing; empty for none
    };
    void add(const CGRect& rect, bool isOpaque);

    std::vector<State> states_;
    std::vector<Paint> paints_;
};

}
