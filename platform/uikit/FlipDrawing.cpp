#include "platform/uikit/FlipDrawing.h"

#include "platform/uikit/SceneVisitor.h"

#include <cmath>

namespace vistrel {

namespace {

constexpr int kStrips = 24;
/// The eye's distance, in widths of what is flipped.
constexpr double kEyeDistance = 2.5;
constexpr float kDeepestShade = 0.4F;

struct Seen {
    double x;
    double scale;
};

/// Where a point `x` right of the axis is seen when the plane is turned by `angle`.
Seen seenFrom(double x, double angle, double distance) {
    const double scale = distance / (distance + x * std::sin(angle));
    return {x * std::cos(angle) * scale, scale};
}

}

void drawFlip(const UIViewAnimationEngine::Flip& flip, const CGRect& bounds,
              SceneVisitor& visitor) {
    const bool firstHalf = flip.progress < 0.5;
    const auto& picture = firstHalf ? flip.before : flip.after;
    if (!picture || bounds.isEmpty()) {
        return;
    }
    const double turned = M_PI * (firstHalf ? flip.progress : flip.progress - 1);
    const double angle = flip.fromLeft ? turned : -turned;
    const double distance = bounds.size.width * kEyeDistance;
    const double width = bounds.size.width / kStrips;
    for (int i = 0; i < kStrips; ++i) {
        const double left = bounds.minX() + i * width;
        const auto start = seenFrom(left - bounds.midX(), angle, distance);
        const auto end = seenFrom(left + width - bounds.midX(), angle, distance);
        const double across = (end.x - start.x) / width;
        if (across <= 0) {
            continue;
        }
        const double down = (start.scale + end.scale) / 2;
        visitor.pushTransform({across, 0, 0, down, bounds.midX() + start.x - across * left,
                               bounds.midY() * (1 - down)});
        visitor.pushClip(CGRectMake(left, bounds.minY(), width, bounds.size.height));
        visitor.drawPicture(bounds, picture);
        const auto shade = kDeepestShade * static_cast<float>(std::abs(std::sin(angle)));
        if (picture->isOpaque() && shade > 0) {
            visitor.fillColor(bounds, UIColor::blackColor().colorWithAlphaComponent(shade));
        }
        visitor.pop();
        visitor.pop();
    }
}

}
