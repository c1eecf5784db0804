#include "platform/uikit/SceneWalk.h"

#include "platform/graphics/Bitmap.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/CAGradientLayer.h"
#include "platform/uikit/FlipDrawing.h"
#include "platform/uikit/ImageRenderer.h"
#include "platform/uikit/SceneVisitor.h"
#include "platform/uikit/UIView.h"
#include "platform/uikit/UIViewAnimationEngine.h"

#include <algorithm>

namespace vistrel {

namespace {

int layingOut = 0;
/// Layout may request layout; what has not settled after that many rounds waits for the next frame.
constexpr int kLayoutRounds = 4;
constexpr double kEverything = 1e9;

void drawGradients(const UIView& view, SceneVisitor& visitor, bool above) {
    for (const auto& layer : view.gradientLayers()) {
        if ((layer->zPosition > 0) != above)
            continue;
        if (auto contents = layer->contents(UIImage::screenScale()))
            visitor.drawPicture(layer->frame, contents);
    }
}

}

bool SceneWalk::isLayingOut() {
    return layingOut > 0;
}

void SceneWalk::layOut(UIView& root) {
    ++layingOut;
    for (int round = 0; round < kLayoutRounds; ++round) {
        if (!root.needsLayout())
            break;
        root.layoutIfNeeded();
    }
    --layingOut;
}

void SceneWalk::walk(UIView& root, SceneVisitor& visitor) {
    layOut(root);
    walkView(root, visitor,
             CGRectMake(-kEverything, -kEverything, 2 * kEverything, 2 * kEverything));
}

void SceneWalk::walkContents(UIView& root, SceneVisitor& visitor) {
    layOut(root);
    walkInside(root, visitor, root.bounds());
}

void SceneWalk::walkView(UIView& view, SceneVisitor& visitor, const CGRect& visible) {
    if (view.isHidden())
        return;
    const ViewState& shown = view.presentationState();
    auto& animations = UIViewAnimationEngine::shared();
    const bool flipping = animations.isFlipping(view);
    if (flipping || animations.isMoving(view))
        animations.movingViewWasDrawn();
    if (shown.alpha <= 0)
        return;
    const auto toSuperview = shown.toSuperview();
    const auto inside = toSuperview.inverted().apply(visible);
    if (view.clipsToBounds() && !shown.bounds.intersects(inside))
        return;
    const bool fades = shown.alpha < 1;
    visitor.pushTransform(toSuperview);
    if (fades)
        visitor.pushOpacity(shown.alpha);
    if (flipping)
        walkFlip(view, visitor);
    else
        walkInside(view, visitor, inside);
    if (fades)
        visitor.pop();
    visitor.pop();
}

void SceneWalk::walkInside(UIView& view, SceneVisitor& visitor, const CGRect& visible) {
    const CGRect bounds = view.presentationState().bounds;
    const bool clips = view.clipsToBounds();
    if (clips)
        visitor.pushClip(bounds);
    if (bounds.intersects(visible))
        walkOwn(view, bounds, visitor);
    drawGradients(view, visitor, false);
    const auto inner = clips ? CGRectIntersection(bounds, visible) : visible;
    for (const auto& child : view.subviews())
        walkView(*child, visitor, inner);
    drawGradients(view, visitor, true);
    if (clips)
        visitor.pop();
}

void SceneWalk::walkOwn(UIView& view, const CGRect& bounds, SceneVisitor& visitor) {
    if (bounds.isEmpty())
        return;
    auto picture = view.contentPicture();
    if (!picture && view.drawsContent())
        picture = view.drawnPicture();
    const auto& background = view.presentationState().backgroundColor;
    if (background.alpha > 0 && !(picture && picture->isOpaque()))
        visitor.fillColor(bounds, background);
    if (picture)
        visitor.drawPicture(bounds, picture);
    if (auto* foreign = view.foreignContent())
        visitor.drawForeign(bounds, *foreign);
}

void SceneWalk::walkFlip(UIView& view, SceneVisitor& visitor) {
    auto& engine = UIViewAnimationEngine::shared();
    const auto* now = engine.flipOf(view);
    if (now->progress >= 0.5 && !now->after) {
        auto after = renderViewToBitmap(view, UIImage::screenScale());
        if (auto* turning = engine.flipOf(view))
            turning->after = std::move(after);
    }
    if (auto* flip = engine.flipOf(view))
        drawFlip(*flip, view.presentationState().bounds, visitor);
}

}
