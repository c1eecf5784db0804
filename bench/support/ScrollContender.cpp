#include "bench/support/ScrollContender.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <glib-unix.h>
#include <unistd.h>
#include <unordered_map>

namespace bench {

namespace {

// Of a block.
constexpr int kWarmUpFrames = 6;
constexpr int kFrames = 40;

double milliseconds(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return now.tv_sec * 1e3 + now.tv_nsec / 1e6;
}

GdkTexture* loadIcon(const std::string& resources) {
    GError* error = nullptr;
    GdkTexture* icon =
        gdk_texture_new_from_filename((resources + "/VideoFile.png").c_str(), &error);
    if (!icon)
        g_error("%s", error->message);
    return icon;
}

graphene_rect_t rectangle(float x, float y, float width, float height) {
    graphene_rect_t made;
    graphene_rect_init(&made, x, y, width, height);
    return made;
}

graphene_point_t point(double x, double y) {
    return {static_cast<float>(x), static_cast<float>(y)};
}

PangoFontDescription* rowFont() {
    PangoFontDescription* font = pango_font_description_from_string("Sans Bold");
    pango_font_description_set_absolute_size(font, 20 * PANGO_SCALE);
    return font;
}

/// Shows the widget in a window until its frames are measured.
void runWindow(GtkWidget* content, const std::function<void(double)>& scrollTo) {
    GMainLoop* loop = g_main_loop_new(nullptr, FALSE);
    GtkWidget* window = gtk_window_new();
    gtk_window_set_decorated(GTK_WINDOW(window), FALSE);
    gtk_window_set_default_size(GTK_WINDOW(window), kWidth, kHeight);
    gtk_window_set_child(GTK_WINDOW(window), content);
    const FrameMeter meter(content, scrollTo, [&] { g_main_loop_quit(loop); });
    gtk_window_present(GTK_WINDOW(window));
    g_main_loop_run(loop);
    gtk_window_destroy(GTK_WINDOW(window));
    g_main_loop_unref(loop);
}

/// Of the one widget there is.
struct CachedNodes {
    GtkWidget* widget = nullptr;
    GdkTexture* icon = nullptr;
    std::unordered_map<int, GskRenderNode*> nodes;
    double offset = 0;
} cachedNodes;

GskRenderNode* nodeFor(int row) {
    GskRenderNode*& node = cachedNodes.nodes[row];
    if (node)
        return node;
    GtkSnapshot* snapshot = gtk_snapshot_new();
    const graphene_rect_t icon = rectangle(15, 15, 32, 32);
    gtk_snapshot_append_texture(snapshot, cachedNodes.icon, &icon);
    PangoLayout* layout = gtk_widget_create_pango_layout(cachedNodes.widget, rowName(row).c_str());
    PangoFontDescription* font = rowFont();
    pango_layout_set_font_description(layout, font);
    pango_font_description_free(font);
    pango_layout_set_width(layout, 230 * PANGO_SCALE);
    pango_layout_set_ellipsize(layout, PANGO_ELLIPSIZE_END);
    const graphene_point_t place = point(60, 17);
    gtk_snapshot_translate(snapshot, &place);
    const GdkRGBA color{0.1F, 0.1F, 0.1F, 1};
    gtk_snapshot_append_layout(snapshot, layout, &color);
    g_object_unref(layout);
    return node = gtk_snapshot_free_to_node(snapshot);
}

void snapshotRows(GtkWidget*, GtkSnapshot* snapshot) {
    const GdkRGBA white{1, 1, 1, 1};
    const graphene_rect_t area = rectangle(0, 0, kWidth, kHeight);
    gtk_snapshot_append_color(snapshot, &white, &area);
    const double offset = cachedNodes.offset;
    const int first = static_cast<int>(offset / kRowHeight);
    for (int row = first; row < kRows && row * kRowHeight < offset + kHeight; ++row) {
        gtk_snapshot_save(snapshot);
        const graphene_point_t place = point(0, row * kRowHeight - offset);
        gtk_snapshot_translate(snapshot, &place);
        gtk_snapshot_append_node(snapshot, nodeFor(row));
        gtk_snapshot_restore(snapshot);
    }
}

void initCachedNodes(gpointer widgetClass, gpointer) {
    GTK_WIDGET_CLASS(widgetClass)->snapshot = snapshotRows;
}

void setUpRow(GtkSignalListItemFactory*, GtkListItem* item, gpointer icon) {
    GtkWidget* box = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 13);
    gtk_widget_set_size_request(box, -1, kRowHeight);
    GtkWidget* picture = gtk_image_new_from_paintable(GDK_PAINTABLE(icon));
    gtk_image_set_pixel_size(GTK_IMAGE(picture), 32);
    gtk_widget_set_margin_start(picture, 15);
    GtkWidget* label = gtk_label_new(nullptr);
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    gtk_label_set_ellipsize(GTK_LABEL(label), PANGO_ELLIPSIZE_END);
    PangoAttrList* attributes = pango_attr_list_new();
    PangoFontDescription* font = rowFont();
    pango_attr_list_insert(attributes, pango_attr_font_desc_new(font));
    pango_font_description_free(font);
    gtk_label_set_attributes(GTK_LABEL(label), attributes);
    pango_attr_list_unref(attributes);
    gtk_box_append(GTK_BOX(box), picture);
    gtk_box_append(GTK_BOX(box), label);
    gtk_list_item_set_child(item, box);
}

void bindRow(GtkSignalListItemFactory*, GtkListItem* item, gpointer) {
    GtkWidget* label = gtk_widget_get_last_child(gtk_list_item_get_child(item));
    auto* string = GTK_STRING_OBJECT(gtk_list_item_get_item(item));
    gtk_label_set_text(GTK_LABEL(label), gtk_string_object_get_string(string));
}

}

std::string rowName(int row) {
    char name[48];
    std::snprintf(name, sizeof name, "Some Show S%02dE%03d", row / 500 + 1, row % 500 + 1);
    return name;
}

FrameMeter::FrameMeter(GtkWidget* widget, std::function<void(double offset)> scrollTo,
                       std::function<void()> done)
    : widget_(widget)
    , scrollTo_(std::move(scrollTo))
    , done_(std::move(done)) {
    g_signal_connect_after(widget, "realize", G_CALLBACK(&FrameMeter::realized), this);
}

void FrameMeter::realized(GtkWidget* widget, FrameMeter* meter) {
    GdkFrameClock* clock = gtk_widget_get_frame_clock(widget);
    g_signal_connect(clock, "before-paint", G_CALLBACK(&FrameMeter::begin), meter);
    g_signal_connect(clock, "after-paint", G_CALLBACK(&FrameMeter::end), meter);
    g_unix_fd_add(STDIN_FILENO, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP), asked, meter);
}

gboolean FrameMeter::asked(gint input, GIOCondition, gpointer self) {
    auto* meter = static_cast<FrameMeter*>(self);
    char request = 0;
    if (read(input, &request, 1) != 1) {
        meter->done_();
        return G_SOURCE_REMOVE;
    }
    meter->startBlock();
    return G_SOURCE_CONTINUE;
}

void FrameMeter::startBlock() {
    frame_ = 0;
    longest_ = 0;
    gtk_widget_add_tick_callback(widget_, ticked, this, nullptr);
}

gboolean FrameMeter::ticked(GtkWidget*, GdkFrameClock*, gpointer meter) {
    return static_cast<gboolean>(static_cast<FrameMeter*>(meter)->tick());
}

bool FrameMeter::tick() {
    if (frame_ == kWarmUpFrames)
        processStart_ = milliseconds(CLOCK_PROCESS_CPUTIME_ID);
    if (frame_ == kWarmUpFrames + kFrames) {
        const double whole = milliseconds(CLOCK_PROCESS_CPUTIME_ID) - processStart_;
        std::printf("%f %f\n", whole / kFrames, longest_);
        std::fflush(stdout);
        return false;
    }
    ++frame_;
    offset_ += kStep;
    scrollTo_(offset_);
    return true;
}

void FrameMeter::begin(GdkFrameClock*, FrameMeter* meter) {
    meter->frameStart_ = milliseconds(CLOCK_THREAD_CPUTIME_ID);
}

void FrameMeter::end(GdkFrameClock*, FrameMeter* meter) {
    const double cost = milliseconds(CLOCK_THREAD_CPUTIME_ID) - meter->frameStart_;
    if (meter->frame_ > kWarmUpFrames)
        meter->longest_ = std::max(meter->longest_, cost);
}

void runListView(const std::string& resources) {
    GtkStringList* names = gtk_string_list_new(nullptr);
    for (int row = 0; row < kRows; ++row)
        gtk_string_list_append(names, rowName(row).c_str());
    GtkListItemFactory* factory = gtk_signal_list_item_factory_new();
    g_signal_connect(factory, "setup", G_CALLBACK(setUpRow), loadIcon(resources));
    g_signal_connect(factory, "bind", G_CALLBACK(bindRow), nullptr);
    GtkWidget* list =
        gtk_list_view_new(GTK_SELECTION_MODEL(gtk_no_selection_new(G_LIST_MODEL(names))), factory);
    GtkWidget* scroller = gtk_scrolled_window_new();
    gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(scroller), list);
    runWindow(scroller, [&](double offset) {
        gtk_adjustment_set_value(gtk_scrolled_window_get_vadjustment(GTK_SCROLLED_WINDOW(scroller)),
                                 offset);
    });
}

void runCachedNodes(const std::string& resources) {
    const GType type = g_type_register_static_simple(
        GTK_TYPE_WIDGET, "BenchCachedNodes", sizeof(GtkWidgetClass), initCachedNodes,
        sizeof(GtkWidget), nullptr, static_cast<GTypeFlags>(0));
    cachedNodes.widget = GTK_WIDGET(g_object_new(type, nullptr));
    cachedNodes.icon = loadIcon(resources);
    gtk_widget_set_overflow(cachedNodes.widget, GTK_OVERFLOW_HIDDEN);
    runWindow(cachedNodes.widget, [](double offset) {
        cachedNodes.offset = offset;
        gtk_widget_queue_draw(cachedNodes.widget);
    });
}

}
