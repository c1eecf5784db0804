#include "platform/uikit/UIViewAnimationCurves.h"

#include <cmath>

namespace vistrel {

namespace {

/// The curve from (0, 0) to (1, 1) with these two control points, solved for y at x.
class UnitBezier {
public:
    constexpr UnitBezier(double x1, double y1, double x2, double y2)
        : x1_(x1)
        , y1_(y1)
        , x2_(x2)
        , y2_(y2) {}

    double yAt(double x) const {
        double low = 0;
        double high = 1;
        for (int i = 0; i < 40; ++i) {
            const double middle = (low + high) / 2;
            (along(x1_, x2_, middle) < x ? low : high) = middle;
        }
        return along(y1_, y2_, (low + high) / 2);
    }

private:
    static double along(double first, double second, double t) {
        const double rest = 1 - t;
        return 3 * rest * rest * t * first + 3 * rest * t * t * second + t * t * t;
    }
    double x1_;
    double y1_;
    double x2_;
    double y2_;
};

struct Parts {
    double angle;
    double scaleX;
    double shear;
    double scaleY;
};

Parts partsOf(const CGAffineTransform& t) {
    const double scaleX = std::hypot(t.a, t.b);
    if (scaleX == 0)
        return {0, 0, 0, std::hypot(t.c, t.d)};
    return {std::atan2(t.b, t.a), scaleX, (t.a * t.c + t.b * t.d) / scaleX,
            (t.a * t.d - t.b * t.c) / scaleX};
}

}

double easedProgress(UIViewAnimationCurve curve, double time) {
    if (time <= 0)
        return 0;
    if (time >= 1)
        return 1;
    switch (curve) {
    case UIViewAnimationCurve::EaseInOut:
        return UnitBezier(0.42, 0, 0.58, 1).yAt(time);
    case UIViewAnimationCurve::EaseIn:
        return UnitBezier(0.42, 0, 1, 1).yAt(time);
    case UIViewAnimationCurve::EaseOut:
        return UnitBezier(0, 0, 0.58, 1).yAt(time);
    case UIViewAnimationCurve::Linear:
        return time;
    }
    return time;
}

double interpolate(double from, double to, double progress) {
    return from + (to - from) * progress;
}

CGPoint interpolate(CGPoint from, CGPoint to, double progress) {
    return {interpolate(from.x, to.x, progress), interpolate(from.y, to.y, progress)};
}

CGRect interpolate(const CGRect& from, const CGRect& to, double progress) {
    return {interpolate(from.origin, to.origin, progress),
            {interpolate(from.size.width, to.size.width, progress),
             interpolate(from.size.height, to.size.height, progress)}};
}

UIColor interpolate(const UIColor& from, const UIColor& to, double progress) {
    const UIColor first = from.alpha == 0 ? to.colorWithAlphaComponent(0) : from;
    const UIColor last = to.alpha == 0 ? from.colorWithAlphaComponent(0) : to;
    const auto mix = [&](float a, float b) {
        return static_cast<float>(interpolate(static_cast<double>(a), b, progress));
    };
    return {mix(first.red, last.red), mix(first.green, last.green), mix(first.blue, last.blue),
            mix(first.alpha, last.alpha)};
}

CGAffineTransform interpolate(const CGAffineTransform& from, const CGAffineTransform& to,
                              double progress) {
    const auto first = partsOf(from);
    const auto last = partsOf(to);
    const double turn = std::remainder(last.angle - first.angle, 2 * M_PI);
    const double angle = first.angle + turn * progress;
    const double scaleX = interpolate(first.scaleX, last.scaleX, progress);
    const double shear = interpolate(first.shear, last.shear, progress);
    const double scaleY = interpolate(first.scaleY, last.scaleY, progress);
    const double cosine = std::cos(angle);
    const double sine = std::sin(angle);
    return {scaleX * cosine,
            scaleX * sine,
            shear * cosine - scaleY * sine,
            shear * sine + scaleY * cosine,
            interpolate(from.tx, to.tx, progress),
            interpolate(from.ty, to.ty, progress)};
}

}
