#include <gtk/gtk.h>
#include <webkit/webkit.h>

#include <cstdio>

namespace {

void afterPaint(GdkFrameClock* clock, gpointer) {
    g_signal_handlers_disconnect_by_func(clock, reinterpret_cast<gpointer>(afterPaint), nullptr);
    std::puts("shown");
    std::fflush(stdout);
}

void loadChanged(WebKitWebView* view, WebKitLoadEvent event, gpointer) {
    if (event != WEBKIT_LOAD_FINISHED)
        return;
    g_signal_connect(gtk_widget_get_frame_clock(GTK_WIDGET(view)), "after-paint",
                     G_CALLBACK(afterPaint), nullptr);
    gtk_widget_queue_draw(GTK_WIDGET(view));
}

}

/// A GTK window with a page engine and nothing else. Reports when the page has been painted
/// after its load.
int main(int, char* argv[]) {
    gtk_init();
    GtkWidget* window = gtk_window_new();
    gtk_window_set_default_size(GTK_WINDOW(window), 640, 960);
    GtkWidget* view = webkit_web_view_new();
    gtk_window_set_child(GTK_WINDOW(window), view);
    g_signal_connect(view, "load-changed", G_CALLBACK(loadChanged), nullptr);
    webkit_web_view_load_uri(WEBKIT_WEB_VIEW(view), argv[1]);
    gtk_window_present(GTK_WINDOW(window));
    g_main_loop_run(g_main_loop_new(nullptr, FALSE));
}
