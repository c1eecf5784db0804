#pragma once
#include "platform/graphics/CGContext.h"
#include "platform/graphics/CGGeometry.h"

#include <memory>

namespace vistrel {
class Bitmap;

/// A rectangle shaded from top to bottom, in its view's coordinates. With a zPosition above 0 it
/// lies over the subviews, else under them.
class CAGradientLayer {
public:
    CGRect frame;
    CGGradient gradient;
    double zPosition = 0;

    /// The shaded rectangle at `scale` pixels per point, repainted only when the size, the scale or
    /// the gradient changes. Null without a size or colours.
    std::shared_ptr<const Bitmap> contents(double scale);

private:
    std::shared_ptr<const Bitmap> painted_;
    CGGradient paintedGradient_;
};

}
