#include "platform/graphics/CGGeometry.h"

#include <algorithm>

namespace vistrel {

namespace {
CGRect betweenCorners(double left, double top, double right, double bottom) {
    return CGRectMake(left, top, right - left, bottom - top);
}
}

CGRect CGRectIntersection(const CGRect& a, const CGRect& b) {
    const auto common = betweenCorners(std::max(a.minX(), b.minX()), std::max(a.minY(), b.minY()),
                                       std::min(a.maxX(), b.maxX()), std::min(a.maxY(), b.maxY()));
    return common.isEmpty() ? CGRect{} : common;
}

CGRect CGRectUnion(const CGRect& a, const CGRect& b) {
    if (a.isEmpty()) {
        return b;
    }
    if (b.isEmpty()) {
        return a;
    }
    return betweenCorners(std::min(a.minX(), b.minX()), std::min(a.minY(), b.minY()),
                          std::max(a.maxX(), b.maxX()), std::max(a.maxY(), b.maxY()));
}

}
