#pragma once
#include "platform/graphics/CGAffineTransform.h"
#include "platform/linux/window/PictureNodes.h"
#include "platform/uikit/SceneVisitor.h"

#include <cairo.h>

#include <vector>

namespace vistrel {

/// Paints a part of the view tree without foreign content with Cairo.
class CairoPainter : public SceneVisitor {
public:
    /// Takes over `cairo`, whose clip is that of the part. Pictures are painted from the store's
    /// surfaces.
    CairoPainter(cairo_t* cairo, PictureNodes& pictures);
    ~CairoPainter() override;
    CairoPainter(const CairoPainter&) = delete;
    CairoPainter& operator=(const CairoPainter&) = delete;

    void pushTransform(const CGAffineTransform& transform) override;
    void pushClip(const CGRect& rect) override;
    void pushOpacity(double opacity) override;
    void pop() override;
    void fillColor(const CGRect& rect, const UIColor& color) override;
    void drawPicture(const CGRect& rect, const std::shared_ptr<const Bitmap>& picture) override;
    void drawForeign(const CGRect&, host::ForeignContent&) override {}

private:
    /// Transforms are kept here and paths built in the part's coordinates: a list pushes two per
    /// row, and saving and restoring Cairo's state for each would cost far more.
    struct State {
        CGAffineTransform toPart;
        bool isSaved = false; ///< the push has saved Cairo's state
        double opacity = 1;   ///< of the push; 1 if it is not a group
    };
    State& push();
    void addRectangle(const CGRect& rect);

    cairo_t* cairo_;
    PictureNodes& pictures_;
    std::vector<State> states_;
};

}
