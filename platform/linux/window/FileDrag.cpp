#include "platform/linux/window/FileDrag.h"

namespace vistrel {

namespace {

constexpr int kIconSize = 32;

NativeReference<GdkContentProvider> contentOf(GFile* file) {
    GdkFileList* files = gdk_file_list_new_from_array(&file, 1);
    auto content = NativeReference<GdkContentProvider>::adopt(
        gdk_content_provider_new_typed(GDK_TYPE_FILE_LIST, files));
    g_boxed_free(GDK_TYPE_FILE_LIST, files);
    return content;
}

/// The theme's picture for the kind of file.
void setIcon(GdkDrag* drag, const char* path, GtkWidget* widget) {
    char* type = g_content_type_guess(path, nullptr, 0, nullptr);
    GIcon* icon = g_content_type_get_icon(type);
    GtkIconPaintable* picture = gtk_icon_theme_lookup_by_gicon(
        gtk_icon_theme_get_for_display(gtk_widget_get_display(widget)), icon, kIconSize,
        gtk_widget_get_scale_factor(widget), GTK_TEXT_DIR_NONE, static_cast<GtkIconLookupFlags>(0));
    gtk_drag_icon_set_from_paintable(drag, GDK_PAINTABLE(picture), 0, 0);
    g_object_unref(picture);
    g_object_unref(icon);
    g_free(type);
}

}

void FileDrag::begin(GdkDevice* device, const std::string& machinePath) {
    end();
    const auto file = NativeReference<GFile>::adopt(g_file_new_for_path(machinePath.c_str()));
    drag_ = NativeReference<GdkDrag>::adopt(
        gdk_drag_begin(gtk_native_get_surface(gtk_widget_get_native(widget_)), device,
                       contentOf(file.get()).get(), GDK_ACTION_COPY, 0, 0));
    if (!drag_)
        return;
    setIcon(drag_.get(), machinePath.c_str(), widget_);
    connections_.push_back(connectSignal<void()>(
        drag_.get(), "dnd-finished", [this] { end(); }));
    connections_.push_back(connectSignal<void(GdkDragCancelReason)>(
        drag_.get(), "cancel", [this](GdkDragCancelReason) { end(); }));
}

void FileDrag::end() {
    connections_.clear();
    drag_ = {};
}

}
