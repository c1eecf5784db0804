#include "platform/linux/media/FramePaintable.h"

namespace vistrel {

// NOLINTNEXTLINE(bugprone-reserved-identifier): the name that the type macros ask for
struct _VistrelFramePaintable {
    GObject parent;
    GdkTexture* frame;
};

namespace {

GdkTexture* frameOf(GdkPaintable* paintable) {
    return VISTREL_FRAME_PAINTABLE(paintable)->frame;
}

void drawFrame(GdkPaintable* paintable, GdkSnapshot* snapshot, double width, double height) {
    if (GdkTexture* frame = frameOf(paintable))
        gdk_paintable_snapshot(GDK_PAINTABLE(frame), snapshot, width, height);
}

int frameWidth(GdkPaintable* paintable) {
    GdkTexture* frame = frameOf(paintable);
    return frame ? gdk_texture_get_width(frame) : 0;
}

int frameHeight(GdkPaintable* paintable) {
    GdkTexture* frame = frameOf(paintable);
    return frame ? gdk_texture_get_height(frame) : 0;
}

void fillInterface(GdkPaintableInterface* interface) {
    interface->snapshot = drawFrame;
    interface->get_intrinsic_width = frameWidth;
    interface->get_intrinsic_height = frameHeight;
}

}

G_DEFINE_FINAL_TYPE_WITH_CODE(VistrelFramePaintable, vistrel_frame_paintable, G_TYPE_OBJECT,
                              G_IMPLEMENT_INTERFACE(GDK_TYPE_PAINTABLE, fillInterface))

static void vistrel_frame_paintable_dispose(GObject* object) {
    g_clear_object(&VISTREL_FRAME_PAINTABLE(object)->frame);
    G_OBJECT_CLASS(vistrel_frame_paintable_parent_class)->dispose(object);
}

static void vistrel_frame_paintable_class_init(VistrelFramePaintableClass* type) {
    G_OBJECT_CLASS(type)->dispose = vistrel_frame_paintable_dispose;
}

static void vistrel_frame_paintable_init(VistrelFramePaintable*) {}

VistrelFramePaintable* vistrel_frame_paintable_new() {
    return static_cast<VistrelFramePaintable*>(
        g_object_new(vistrel_frame_paintable_get_type(), nullptr));
}

void vistrel_frame_paintable_set_frame(VistrelFramePaintable* paintable, GdkTexture* frame) {
    const bool resized = !paintable->frame ||
                         gdk_texture_get_width(paintable->frame) != gdk_texture_get_width(frame) ||
                         gdk_texture_get_height(paintable->frame) != gdk_texture_get_height(frame);
    g_set_object(&paintable->frame, frame);
    if (resized)
        gdk_paintable_invalidate_size(GDK_PAINTABLE(paintable));
    gdk_paintable_invalidate_contents(GDK_PAINTABLE(paintable));
}

}
