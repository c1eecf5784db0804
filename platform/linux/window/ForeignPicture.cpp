#include "platform/linux/window/ForeignPicture.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

std::optional<PixelPlace> PixelPlace::of(const CGRect& rect, const CGAffineTransform& toPixels) {
    constexpr double kNegligible = 0.05; // pixels
    const double longest = std::max(rect.size.width, rect.size.height);
    const auto vanishes = [&](double factor) {
        return std::abs(factor) * longest < kNegligible;
    };
    const auto& t = toPixels;
    PixelPlace place;
    if (t.a * t.d - t.b * t.c <= 0)
        return std::nullopt;
    if (vanishes(t.b) && vanishes(t.c))
        place.quarters = t.a > 0 ? 0 : 2;
    else if (vanishes(t.a) && vanishes(t.d))
        place.quarters = t.b > 0 ? 1 : 3;
    else
        return std::nullopt;
    const CGRect pixels = toPixels.apply(rect);
    const auto whole = [](double value) {
        return static_cast<int>(std::lround(value));
    };
    place.x = whole(pixels.minX());
    place.y = whole(pixels.minY());
    place.width = std::max(1, whole(pixels.maxX()) - place.x);
    place.height = std::max(1, whole(pixels.maxY()) - place.y);
    return place;
}

}
