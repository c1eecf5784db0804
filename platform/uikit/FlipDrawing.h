#pragma once
#include "platform/graphics/CGGeometry.h"
#include "platform/uikit/UIViewAnimationEngine.h"

namespace vistrel {
class SceneVisitor;

/// Paints the picture rotated about its vertical middle axis by `angle` (radians, less than a
/// quarter turn either way) in perspective, darker the further it turns. The result is as wide as
/// the picture and `kFlipHeadroom` of its height taller at both ends, for the near edge. A bitmap
/// of that size in `turned` is reused.
void turnPicture(const Bitmap& picture, double angle, std::shared_ptr<Bitmap>& turned);
inline constexpr double kFlipHeadroom = 0.15;

/// Draws the side that a flipping view with these bounds shows now.
void drawFlip(UIViewAnimationEngine::Flip& flip, const CGRect& bounds, SceneVisitor& visitor);

}
