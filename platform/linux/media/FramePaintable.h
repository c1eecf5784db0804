#pragma once
#include <gtk/gtk.h>

namespace vistrel {

/// A paintable that shows the last frame it was given; empty before the first.
G_DECLARE_FINAL_TYPE(VistrelFramePaintable, vistrel_frame_paintable, VISTREL, FRAME_PAINTABLE,
                     GObject)

VistrelFramePaintable* vistrel_frame_paintable_new();
/// Takes a reference of its own and tells that the contents changed.
void vistrel_frame_paintable_set_frame(VistrelFramePaintable* paintable, GdkTexture* frame);

}
