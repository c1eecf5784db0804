#pragma once
#include "platform/graphics/CGContext.h"
#include "platform/graphics/CGGeometry.h"

namespace vistrel {

/// A rectangle shaded from top to bottom, in its view's coordinates. With a zPosition above 0 it
/// lies over the subviews, else under them.
class CAGradientLayer {
public:
    CGRect frame;
    CGGradient gradient;
    double zPosition = 0;
};

}
