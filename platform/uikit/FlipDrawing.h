#pragma once
#include "platform/graphics/CGGeometry.h"
#include "platform/uikit/UIViewAnimationEngine.h"

namespace vistrel {
class SceneVisitor;

/// Paints the picture turned about its upright middle axis by `angle` (radians, less than a quarter
/// turn either way) as an eye nearby sees it, darker the further it turns. As wide as the picture
/// and higher by `kFlipHeadroom` of its height above and below, for the edge that comes near. A
/// picture of that size in `turned` is painted over.
void turnPicture(const Bitmap& picture, double angle, std::shared_ptr<Bitmap>& turned);
inline constexpr double kFlipHeadroom = 0.15;

/// Draws the side that a flip of a view with these bounds shows now.
void drawFlip(UIViewAnimationEngine::Flip& flip, const CGRect& bounds, SceneVisitor& visitor);

}
