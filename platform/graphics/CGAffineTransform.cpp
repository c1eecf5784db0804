#include "platform/graphics/CGAffineTransform.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vistrel {

CGPoint CGAffineTransform::apply(CGPoint point) const {
    return {a * point.x + c * point.y + tx, b * point.x + d * point.y + ty};
}

CGRect CGAffineTransform::apply(const CGRect& rect) const {
    if (b == 0 && c == 0 && a > 0 && d > 0) {
        return CGRectMake(a * rect.origin.x + tx, d * rect.origin.y + ty, a * rect.size.width,
                          d * rect.size.height);
    }
    const std::array corners = {
        apply(CGPoint{rect.minX(), rect.minY()}), apply(CGPoint{rect.maxX(), rect.minY()}),
        apply(CGPoint{rect.minX(), rect.maxY()}), apply(CGPoint{rect.maxX(), rect.maxY()})};
    CGPoint low = corners[0];
    CGPoint high = corners[0];
    for (const auto& corner : corners) {
        low = {std::min(low.x, corner.x), std::min(low.y, corner.y)};
        high = {std::max(high.x, corner.x), std::max(high.y, corner.y)};
    }
    return CGRectMake(low.x, low.y, high.x - low.x, high.y - low.y);
}

CGAffineTransform CGAffineTransform::concat(const CGAffineTransform& next) const {
    return {a * next.a + b * next.c,
            a * next.b + b * next.d,
            c * next.a + d * next.c,
            c * next.b + d * next.d,
            tx * next.a + ty * next.c + next.tx,
            tx * next.b + ty * next.d + next.ty};
}

CGAffineTransform CGAffineTransform::inverted() const {
    const double determinant = a * d - b * c;
    if (determinant == 0 || !std::isfinite(determinant))
        return {};
    return {d / determinant,
            -b / determinant,
            -c / determinant,
            a / determinant,
            (c * ty - d * tx) / determinant,
            (b * tx - a * ty) / determinant};
}

CGAffineTransform CGAffineTransformMakeRotation(double radians) {
    // A quarter turn must map whole points to whole points, also when its angle is a float's.
    const auto exact = [](double value) {
        return std::abs(value - std::round(value)) < 1e-7 ? std::round(value) : value;
    };
    const double cosine = exact(std::cos(radians));
    const double sine = exact(std::sin(radians));
    return {cosine, sine, -sine, cosine, 0, 0};
}

CGAffineTransform CGAffineTransformMakeScale(double sx, double sy) {
    return {sx, 0, 0, sy, 0, 0};
}

CGAffineTransform CGAffineTransformMakeTranslation(double tx, double ty) {
    return {1, 0, 0, 1, tx, ty};
}

}
