#pragma once
#include "platform/graphics/CGAffineTransform.h"
#include "platform/graphics/CGContext.h"
#include "platform/graphics/UIColor.h"

namespace vistrel {
class Bitmap;
namespace host {
class ForeignContent;
}

/// Receives the view tree as finished pieces, back to front. The walk calls it; the window and the
/// image renderer are its two outputs. Every push is matched by a pop, in order.
class SceneVisitor {
public:
    virtual ~SceneVisitor() = default;
    virtual void pushTransform(const CGAffineTransform& transform) = 0;
    virtual void pushClip(const CGRect& rect) = 0;
    virtual void pushOpacity(double opacity) = 0;
    virtual void pop() = 0;
    virtual void fillColor(const CGRect& rect, const UIColor& color) = 0;
    /// A view's finished picture, stretched over `rect`. The same bitmap object with the same
    /// generation has the same pixels, so outputs may keep what they made of it.
    virtual void drawPicture(const CGRect& rect, const std::shared_ptr<const Bitmap>& picture) = 0;
    virtual void drawForeign(const CGRect& rect, host::ForeignContent& content) = 0;
};

}
