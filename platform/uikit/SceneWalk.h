#pragma once

namespace vistrel {
class SceneVisitor;
class UIView;

/// The one walk over the view tree: lays out, paints what is dirty, then hands transform, clip,
/// opacity, background, picture, foreign content and children to the visitor, back to front.
class SceneWalk {
public:
    /// `root` is drawn in its superview's coordinates.
    static void walk(UIView& root, SceneVisitor& visitor);

private:
    static void walkView(UIView& view, SceneVisitor& visitor);
    static void paintIfNeeded(UIView& view);
};

}
