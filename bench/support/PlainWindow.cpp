#include <gtk/gtk.h>

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace {

/// Reports when the first frame is on screen, and stays until told to quit.
void afterPaint(GdkFrameClock* clock, gpointer) {
    g_signal_handlers_disconnect_by_func(clock, reinterpret_cast<gpointer>(afterPaint), nullptr);
    std::puts("shown");
    std::fflush(stdout);
}

}

int main() {
    gtk_init();
    GtkWidget* window = gtk_window_new();
    gtk_window_set_default_size(GTK_WINDOW(window), 640, 960);
    gtk_window_set_child(GTK_WINDOW(window), gtk_label_new("Plain"));
    gtk_widget_realize(window);
    g_signal_connect(gtk_widget_get_frame_clock(window), "after-paint", G_CALLBACK(afterPaint),
                     nullptr);
    gtk_window_present(GTK_WINDOW(window));
    g_main_loop_run(g_main_loop_new(nullptr, FALSE));
}
