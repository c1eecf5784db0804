#pragma once
#include "platform/graphics/CGGeometry.h"

namespace vistrel {
class SceneVisitor;
class UIView;

/// The walk over the view tree: lays out, repaints what is dirty, then passes transform, clip,
/// opacity, background, picture, foreign content and children to the visitor, back to front.
class SceneWalk {
public:
    /// `root` is drawn in its superview's coordinates.
    static void walk(UIView& root, SceneVisitor& visitor);
    /// The content of `root` in its own coordinates; its position, alpha, visibility and flip are
    /// ignored.
    static void walkContents(UIView& root, SceneVisitor& visitor);
    /// True during the layout that begins a walk.
    static bool isLayingOut();

private:
    static void layOut(UIView& root);
    static void walkView(UIView& view, SceneVisitor& visitor, const CGRect& visible);
    static void walkInside(UIView& view, SceneVisitor& visitor, const CGRect& visible);
    static void walkFlip(UIView& view, SceneVisitor& visitor);
    static void walkOwn(UIView& view, const CGRect& bounds, SceneVisitor& visitor);
};

}
