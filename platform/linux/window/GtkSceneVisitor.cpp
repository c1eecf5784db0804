#include "platform/linux/window/GtkSceneVisitor.h"

#include "platform/host/ForeignContent.h"
#include "platform/linux/window/CairoPainter.h"
#include "platform/linux/window/ForeignPicture.h"
#include "platform/linux/window/GraphenePlaces.h"
#include "platform/linux/window/GtkForeignContent.h"
#include "platform/linux/window/SceneRecording.h"

#include <algorithm>
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
        gtk_snapshot_append_node(snapshot_, kept);
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
    gtk_snapshot_append_node(snapshot_, node);
    nodes_.keepGroup(std::move(content), node);
}

void GtkSceneVisitor::pushTransform(const CGAffineTransform& transform) {
    pushed_.push_back({Pushed::Kind::Transform, transform, {}});
    enter(pushed_.back());
    transforms_.push_back(transform.concat(transforms_.back()));
}

void GtkSceneVisitor::pushClip(const CGRect& rect) {
    pushed_.push_back({Pushed::Kind::Clip, {}, rect});
    enter(pushed_.back());
}

void GtkSceneVisitor::pushOpacity(double opacity) {
    pushed_.push_back({Pushed::Kind::Opacity, {}, {}, opacity});
    enter(pushed_.back());
}

void GtkSceneVisitor::pop() {
    leave(pushed_.back());
    if (pushed_.back().kind == Pushed::Kind::Transform)
        transforms_.pop_back();
    pushed_.pop_back();
}

void GtkSceneVisitor::enter(const Pushed& pushed) {
    const graphene_rect_t clip = grapheneRect(pushed.clip);
    switch (pushed.kind) {
    case Pushed::Kind::Transform:
        gtk_snapshot_save(snapshot_);
        transformSnapshot(snapshot_, pushed.transform);
        break;
    case Pushed::Kind::Clip:
        gtk_snapshot_push_clip(snapshot_, &clip);
        break;
    case Pushed::Kind::Opacity:
        gtk_snapshot_push_opacity(snapshot_, pushed.opacity);
        break;
    }
}

void GtkSceneVisitor::leave(const Pushed& pushed) {
    if (pushed.kind == Pushed::Kind::Transform)
        gtk_snapshot_restore(snapshot_);
    else
        gtk_snapshot_pop(snapshot_);
}

void GtkSceneVisitor::fillColor(const CGRect& rect, const UIColor& color) {
    const graphene_rect_t bounds = grapheneRect(rect);
    const GdkRGBA rgba = gdkColor(color);
    gtk_snapshot_append_color(snapshot_, &rgba, &bounds);
}

void GtkSceneVisitor::drawPicture(const CGRect& rect,
                                  const std::shared_ptr<const Bitmap>& picture) {
    if (!picture || rect.isEmpty())
        return;
    // A kept node covers (0, 0) to the size it was made for; moving it costs nothing.
    const PictureNodes::Node node = nodes_.nodeFor(picture, rect.size);
    const bool fits = node.size == rect.size;
    const bool atOrigin = rect.origin == CGPoint{};
    if (fits && atOrigin) {
        gtk_snapshot_append_node(snapshot_, node.node);
        return;
    }
    gtk_snapshot_save(snapshot_);
    const graphene_point_t origin =
        graphenePoint(static_cast<float>(rect.origin.x), static_cast<float>(rect.origin.y));
    gtk_snapshot_translate(snapshot_, &origin);
    if (!fits)
        gtk_snapshot_scale(snapshot_, static_cast<float>(rect.size.width / node.size.width),
                           static_cast<float>(rect.size.height / node.size.height));
    gtk_snapshot_append_node(snapshot_, node.node);
    gtk_snapshot_restore(snapshot_);
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
        transformSnapshot(snapshot_, transforms_.back().inverted());
        gtk_widget_snapshot_child(screen_, widget, snapshot_);
        gtk_snapshot_restore(snapshot_);
    } else if (ForeignPicture* picture = isCovered_ ? nullptr : foreign->picture()) {
        picture->setScreen(screen_);
        drawMovingPicture(rect, *picture);
    }
}

bool GtkSceneVisitor::isTranslucent() const {
    return std::any_of(pushed_.begin(), pushed_.end(),
                       [](const Pushed& pushed) { return pushed.opacity < 1; });
}

void GtkSceneVisitor::drawMovingPicture(const CGRect& rect, ForeignPicture& picture) {
    const double pixelsPerUnit = gtk_widget_get_scale_factor(screen_);
    const auto place = PixelPlace::of(
        rect, transforms_.back().concat(CGAffineTransformMakeScale(pixelsPerUnit, pixelsPerUnit)));
    if (!place || isTranslucent() || !nodes_.isForSoftwareRenderer()) {
        gtk_snapshot_save(snapshot_);
        const graphene_point_t origin =
            graphenePoint(static_cast<float>(rect.origin.x), static_cast<float>(rect.origin.y));
        gtk_snapshot_translate(snapshot_, &origin);
        picture.draw(snapshot_, rect.size);
        gtk_snapshot_restore(snapshot_);
        return;
    }
    // Outside of every transform: products of rotations are never exact, and the renderer copies
    // pixels only where they fall on pixels.
    std::for_each(pushed_.rbegin(), pushed_.rend(), [this](const Pushed& open) { leave(open); });
    picture.drawPixels(snapshot_, *place, pixelsPerUnit);
    std::for_each(pushed_.begin(), pushed_.end(), [this](const Pushed& open) { enter(open); });
}

}
