#pragma once
#include "platform/graphics/CGGeometry.h"

namespace vistrel {

/// x' = a x + c y + tx, y' = b x + d y + ty.
struct CGAffineTransform {
    double a = 1;
    double b = 0;
    double c = 0;
    double d = 1;
    double tx = 0;
    double ty = 0;

    bool isIdentity() const { return *this == CGAffineTransform{}; }
    /// Whether upright rectangles stay upright: it may mirror, and turn by quarters.
    bool keepsRectangles() const { return (b == 0 && c == 0) || (a == 0 && d == 0); }
    CGPoint apply(CGPoint point) const;
    /// The bounding box of the transformed rectangle.
    CGRect apply(const CGRect& rect) const;
    /// First this, then `next`.
    CGAffineTransform concat(const CGAffineTransform& next) const;
    /// The identity when it cannot be inverted.
    CGAffineTransform inverted() const;
    friend bool operator==(const CGAffineTransform&, const CGAffineTransform&) = default;
};

CGAffineTransform CGAffineTransformMakeRotation(double radians);
CGAffineTransform CGAffineTransformMakeScale(double sx, double sy);
CGAffineTransform CGAffineTransformMakeTranslation(double tx, double ty);

}
