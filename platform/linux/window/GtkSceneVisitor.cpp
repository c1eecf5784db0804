#include "platform/linux/window/GtkSceneVisitor.h"

#include "platform/host/ForeignContent.h"
#include "platform/linux/window/CairoPainter.h"
#include "platform/linux/window/ForeignPicture.h"
#include "platform/linux/window/GraphenePlaces.h"
#include "platform/linux/window/GtkForeignContent.h"
#include "platform/linux/window/SceneRecording.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace vistrel {

namespace {

graphene_rect_t grapheneRect(const CGRect& rect) {
    return grapheneRectangle(static_cast<float>(rect.origin.x), static_cast<float>(rect.origin.y),
                             static_cast<float>(rect.size.width),
                             static_cast<float>(rect.size.height));
}

GdkRGBA gdkColor(const UIColor& color) {
    return {color.red, color.green, color.blue, color.alpha};
}

}

GskTransform* makeGskTransform(const CGAffineTransform& transform) {
    if (transform.isIdentity())
        return nullptr;
    // Built from the toolkit's own steps: it cannot tell that a plain matrix is flat, and the
    // software renderer refuses it.
    const graphene_point_t offset =
        graphenePoint(static_cast<float>(transform.tx), static_cast<float>(transform.ty));
    GskTransform* result = gsk_transform_translate(nullptr, &offset);
    if (transform.b == 0 && transform.c == 0) {
        if (transform.a == 1 && transform.d == 1)
            return result;
        return gsk_transform_scale(result, static_cast<float>(transform.a),
                                   static_cast<float>(transform.d));
    }
    const double width = std::hypot(transform.a, transform.b);
    if (width == 0)
        return gsk_transform_scale(result, 0, 0);
    const double determinant = transform.a * transform.d - transform.b * transform.c;
    const double shear = (transform.a * transform.c + transform.b * transform.d) / determinant;
    result = gsk_transform_rotate(
        result, static_cast<float>(std::atan2(transform.b, transform.a) * 180 / std::numbers::pi));
    if (std::abs(shear) > 1e-9)
        result = gsk_transform_skew(
            result, static_cast<float>(std::atan(shear) * 180 / std::numbers::pi), 0);
    return gsk_transform_scale(result, static_cast<float>(width),
                               static_cast<float>(determinant / width));
}

namespace {

/// The snapshot takes its own reference.
void transformSnapshot(GtkSnapshot* snapshot, const CGAffineTransform& transform) {
    GskTransform* made = makeGskTransform(transform);
    gtk_snapshot_transform(snapshot, made);
    gsk_transform_unref(made);
}

}

GtkSceneVisitor::GtkSceneVisitor(GtkWidget* screen, GtkSnapshot* snapshot, PictureNodes& nodes)
    : screen_(screen)
    , snapshot_(snapshot)
    , nodes_(nodes) {}

void GtkSceneVisitor::draw(const SceneRecording& recording) {
    for (std::size_t step = 0; step < recording.steps(); ++step) {
        if (recording.isOneNode(step) && nodes_.isForSoftwareRenderer()) {
            paintIntoOneNode(recording, step);
            step = recording.endOf(step);
        } else {
            isCovered_ = recording.isCovered(step);
            recording.replay(step, *this);
        }
    }
}

void GtkSceneVisitor::paintIntoOneNode(const SceneRecording& recording, std::size_t clip) {
    // Reusing the node of the last frame tells the renderer that nothing has changed there.
    auto content = recording.contentOf(clip);
    if (GskRenderNode* kept = nodes_.groupWith(content)) {
        for (std::size_t step = clip + 1; step < recording.endOf(clip); ++step)
            if (const auto& picture = recording.pictureOf(step);
                picture && !recording.isCovered(step))
                nodes_.pixelsOf(picture);
        appendNode(kept, states_.back().toSnapshot);
        return;
    }
    // Created directly: the snapshot's function for it misplaces the node under a scale.
    const graphene_rect_t bounds = grapheneRect(recording.rectOf(clip));
    GskRenderNode* node = gsk_cairo_node_new(&bounds);
    {
        CairoPainter painter(gsk_cairo_node_get_draw_context(node), nodes_);
        for (std::size_t step = clip + 1; step < recording.endOf(clip); ++step)
            recording.replay(step, painter);
    }
    appendNode(node, states_.back().toSnapshot);
    nodes_.keepGroup(std::move(content), node);
}

GtkSceneVisitor::State& GtkSceneVisitor::push() {
    State& state = states_.emplace_back(states_.back());
    state.needsPop = state.needsRestore = false;
    return state;
}

void GtkSceneVisitor::pushTransform(const CGAffineTransform& transform) {
    State& state = push();
    state.toSnapshot = transform.concat(state.toSnapshot);
}

void GtkSceneVisitor::pushClip(const CGRect& rect) {
    State& state = push();
    state.needsPop = true;
    if (!state.toSnapshot.keepsRectangles()) {
        gtk_snapshot_save(snapshot_);
        transformSnapshot(snapshot_, state.toSnapshot);
        state.toScreen = state.toSnapshot.concat(state.toScreen);
        state.toSnapshot = {};
        state.needsRestore = true;
    }
    const graphene_rect_t clip = grapheneRect(state.toSnapshot.apply(rect));
    gtk_snapshot_push_clip(snapshot_, &clip);
}

void GtkSceneVisitor::pushOpacity(double opacity) {
    State& state = push();
    state.needsPop = true;
    state.isTranslucent = state.isTranslucent || opacity < 1;
    gtk_snapshot_push_opacity(snapshot_, opacity);
}

void GtkSceneVisitor::pop() {
    if (states_.back().needsPop)
        gtk_snapshot_pop(snapshot_);
    if (states_.back().needsRestore)
        gtk_snapshot_restore(snapshot_);
    states_.pop_back();
}

void GtkSceneVisitor::appendNode(GskRenderNode* node, const CGAffineTransform& toSnapshot) {
    if (toSnapshot.isIdentity()) {
        gtk_snapshot_append_node(snapshot_, node);
        return;
    }
    gtk_snapshot_save(snapshot_);
    transformSnapshot(snapshot_, toSnapshot);
    gtk_snapshot_append_node(snapshot_, node);
    gtk_snapshot_restore(snapshot_);
}

void GtkSceneVisitor::fillColor(const CGRect& rect, const UIColor& color) {
    const CGAffineTransform& toSnapshot = states_.back().toSnapshot;
    const bool fits = toSnapshot.keepsRectangles();
    const graphene_rect_t bounds = grapheneRect(fits ? toSnapshot.apply(rect) : rect);
    const GdkRGBA rgba = gdkColor(color);
    GskRenderNode* node = gsk_color_node_new(&rgba, &bounds);
    appendNode(node, fits ? CGAffineTransform{} : toSnapshot);
    gsk_render_node_unref(node);
}

void GtkSceneVisitor::drawPicture(const CGRect& rect,
                                  const std::shared_ptr<const Bitmap>& picture) {
    if (!picture || rect.isEmpty())
        return;
    // A kept node covers (0, 0) to the size it was made for; moving it costs nothing.
    const PictureNodes::Node node = nodes_.nodeFor(picture, rect.size);
    const CGAffineTransform place{rect.size.width / node.size.width,
                                  0,
                                  0,
                                  rect.size.height / node.size.height,
                                  rect.origin.x,
                                  rect.origin.y};
    appendNode(node.node, place.concat(states_.back().toSnapshot));
}

void GtkSceneVisitor::drawForeign(const CGRect& rect, host::ForeignContent& content) {
    sawForeign_ = true;
    auto* foreign = dynamic_cast<GtkForeignContent*>(&content);
    if (!foreign)
        return;
    if (GtkWidget* widget = foreign->widget()) {
        if (gtk_widget_get_parent(widget) != screen_)
            return;
        // The child's allocation includes the transform from the screen, so undo that first.
        gtk_snapshot_save(snapshot_);
        transformSnapshot(snapshot_, states_.back().toScreen.inverted());
        gtk_widget_snapshot_child(screen_, widget, snapshot_);
        gtk_snapshot_restore(snapshot_);
    } else if (ForeignPicture* picture = isCovered_ ? nullptr : foreign->picture()) {
        picture->setScreen(screen_);
        drawMovingPicture(rect, *picture);
    }
}

void GtkSceneVisitor::drawMovingPicture(const CGRect& rect, ForeignPicture& picture) {
    const State& state = states_.back();
    const double pixelsPerUnit = gtk_widget_get_scale_factor(screen_);
    const auto place = PixelPlace::of(
        rect, state.toSnapshot.concat(CGAffineTransformMakeScale(pixelsPerUnit, pixelsPerUnit)));
    CGRect shown = rect;
    if (place && state.toScreen.isIdentity() && !state.isTranslucent) {
        if (nodes_.isForSoftwareRenderer()) {
            picture.drawPixels(snapshot_, *place, pixelsPerUnit);
            return;
        }
        shown = state.toSnapshot.inverted().apply(
            CGRectMake(place->x / pixelsPerUnit, place->y / pixelsPerUnit,
                       place->width / pixelsPerUnit, place->height / pixelsPerUnit));
    }
    gtk_snapshot_save(snapshot_);
    transformSnapshot(
        snapshot_,
        CGAffineTransformMakeTranslation(shown.origin.x, shown.origin.y).concat(state.toSnapshot));
    picture.draw(snapshot_, shown.size);
    gtk_snapshot_restore(snapshot_);
}

}
