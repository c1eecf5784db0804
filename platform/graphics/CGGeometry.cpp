#include "platform/graphics/CGGeometry.h"

#include <algorithm>

namespace vistrel {

CGRect CGRectIntersection(const CGRect& a, const CGRect& b) {
    const double left = std::max(a.minX(), b.minX());
    const double top = std::max(a.minY(), b.minY());
    const auto common = CGRectMake(left, top, std::min(a.maxX(), b.maxX()) - left,
                                   std::min(a.maxY(), b.maxY()) - top);
    return common.isEmpty() ? CGRect{} : common;
}

}
