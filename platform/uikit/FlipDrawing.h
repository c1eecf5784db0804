#pragma once
#include "platform/graphics/CGGeometry.h"
#include "platform/uikit/UIViewAnimationEngine.h"

namespace vistrel {
class SceneVisitor;

/// Draws the picture that a flip shows now, turned about the middle of `bounds` and seen from
/// nearby: in upright strips, each of its own height.
void drawFlip(const UIViewAnimationEngine::Flip& flip, const CGRect& bounds, SceneVisitor& visitor);

}
