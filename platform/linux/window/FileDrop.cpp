#include "platform/linux/window/FileDrop.h"

#include <memory>
#include <utility>

namespace vistrel {

FileDrop::FileDrop(GtkWidget* widget, Dropped dropped)
    : widget_(widget)
    , target_(GTK_EVENT_CONTROLLER(gtk_drop_target_new(GDK_TYPE_FILE_LIST, GDK_ACTION_COPY)))
    , dropped_(std::move(dropped)) {
    gtk_event_controller_set_propagation_phase(target_, GTK_PHASE_CAPTURE);
    connection_ = connectSignal<gboolean(const GValue*, double, double)>(
        target_, "drop", [this](const GValue* value, double, double) { return drop(value); });
    gtk_widget_add_controller(widget_, target_);
}

FileDrop::~FileDrop() {
    gtk_widget_remove_controller(widget_, target_);
}

bool FileDrop::drop(const GValue* value) const {
    // A file that was dragged out of this window comes back.
    GdkDrop* now = gtk_drop_target_get_current_drop(GTK_DROP_TARGET(target_));
    if (now && gdk_drop_get_drag(now))
        return false;
    GSList* files = gdk_file_list_get_files(static_cast<GdkFileList*>(g_value_get_boxed(value)));
    for (const GSList* file = files; file; file = file->next) {
        const std::unique_ptr<char, decltype(&g_free)> address(g_file_get_uri(G_FILE(file->data)),
                                                               g_free);
        dropped_(address.get());
    }
    const bool hasFiles = files != nullptr;
    g_slist_free(files);
    return hasFiles;
}

}
