#pragma once
#include "platform/graphics/CGContext.h"
#include "platform/uikit/SceneVisitor.h"

#include <vector>

namespace vistrel {

/// Paints a walk into a bitmap, without foreign content.
class BitmapVisitor : public SceneVisitor {
public:
    BitmapVisitor(std::shared_ptr<Bitmap> bitmap, double scale)
        : context_(std::move(bitmap), scale) {}

    void pushTransform(const CGAffineTransform& transform) override;
    void pushClip(const CGRect& rect) override;
    void pushOpacity(double opacity) override;
    void pop() override;
    void fillColor(const CGRect& rect, const UIColor& color) override;
    void drawPicture(const CGRect& rect, const std::shared_ptr<const Bitmap>& picture) override;
    void drawForeign(const CGRect&, host::ForeignContent&) override {}

private:
    CGContext context_;
    std::vector<bool> layers_; ///< for each push: whether it opened a layer
};

}
