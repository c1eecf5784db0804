#include "platform/linux/window/UploadMemory.h"

#include <gdk/x11/gdkx.h>

#include <cairo-xlib.h>

namespace vistrel {

UploadMemory::~UploadMemory() {
    keep(nullptr);
}

void UploadMemory::keep(cairo_surface_t* piece) {
    if (piece_)
        cairo_surface_destroy(piece_);
    piece_ = piece;
}

void UploadMemory::keepFor(GtkWidget* widget) {
    GdkSurface* window = gtk_native_get_surface(gtk_widget_get_native(widget));
    if (!GDK_IS_X11_SURFACE(window))
        return;
    const int scale = gdk_surface_get_scale_factor(window);
    const int width = gdk_surface_get_width(window) * scale;
    const int height = gdk_surface_get_height(window) * scale;
    if (width * height <= pixels_)
        return;
    pixels_ = width * height;
    // The whole interface to this kind of display is deprecated.
    G_GNUC_BEGIN_IGNORE_DEPRECATIONS;
    auto* display = gdk_x11_display_get_xdisplay(gdk_surface_get_display(window));
    const auto target = gdk_x11_surface_get_xid(window);
    G_GNUC_END_IGNORE_DEPRECATIONS;
    XWindowAttributes attributes;
    if (XGetWindowAttributes(display, target, &attributes) == 0)
        return;
    cairo_surface_t* screen =
        cairo_xlib_surface_create(display, target, attributes.visual, width, height);
    // A piece as large as a frame makes the library take memory for several.
    keep(cairo_surface_create_similar_image(screen, CAIRO_FORMAT_RGB24, width, height));
    cairo_surface_destroy(screen);
}

}
