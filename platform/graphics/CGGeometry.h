#pragma once

namespace vistrel {

/// Points unless stated otherwise; y grows downward.
struct CGPoint {
    double x = 0;
    double y = 0;
    friend bool operator==(const CGPoint&, const CGPoint&) = default;
};

struct CGSize {
    double width = 0;
    double height = 0;
    friend bool operator==(const CGSize&, const CGSize&) = default;
};

struct CGRect {
    CGPoint origin;
    CGSize size;

    double minX() const { return origin.x; }
    double minY() const { return origin.y; }
    double maxX() const { return origin.x + size.width; }
    double maxY() const { return origin.y + size.height; }
    double midX() const { return origin.x + size.width / 2; }
    double midY() const { return origin.y + size.height / 2; }
    bool isEmpty() const { return size.width <= 0 || size.height <= 0; }
    bool contains(CGPoint point) const {
        return point.x >= minX() && point.x < maxX() && point.y >= minY() && point.y < maxY();
    }
    bool intersects(const CGRect& other) const {
        return minX() < other.maxX() && other.minX() < maxX() && minY() < other.maxY() &&
               other.minY() < maxY();
    }
    CGRect offsetBy(double dx, double dy) const { return {{origin.x + dx, origin.y + dy}, size}; }
    CGRect insetBy(double dx, double dy) const {
        return {{origin.x + dx, origin.y + dy}, {size.width - 2 * dx, size.height - 2 * dy}};
    }
    friend bool operator==(const CGRect&, const CGRect&) = default;
};

constexpr CGRect CGRectMake(double x, double y, double width, double height) {
    return {{x, y}, {width, height}};
}
/// The common part, empty at the origin when there is none.
CGRect CGRectIntersection(const CGRect& a, const CGRect& b);

struct UIEdgeInsets {
    double top = 0;
    double left = 0;
    double bottom = 0;
    double right = 0;
    friend bool operator==(const UIEdgeInsets&, const UIEdgeInsets&) = default;
};

}
