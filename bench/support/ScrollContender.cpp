#include "bench/support/ScrollContender.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <unordered_map>

namespace bench {

namespace {

constexpr int kWarmUpFrames = 60;
constexpr int kFrames = 360;

double milliseconds(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return now.tv_sec * 1e3 + now.tv_nsec / 1e6;
}

Glib::RefPtr<Gdk::Texture> loadIcon(const std::string& resources) {
    return Gdk::Texture::create_from_filename(resources + "/VideoFile.png");
}

graphene_rect_t rectangle(float x, float y, float width, float height) {
    graphene_rect_t made;
    graphene_rect_init(&made, x, y, width, height);
    return made;
}

graphene_point_t point(double x, double y) {
    return {static_cast<float>(x), static_cast<float>(y)};
}

Pango::FontDescription rowFont() {
    Pango::FontDescription font("Sans Bold");
    font.set_absolute_size(20 * PANGO_SCALE);
    return font;
}

/// Shows the widget in a window until its frames are measured.
void runWindow(Gtk::Widget& content, Gtk::Widget& measured,
               const std::function<void(double)>& scrollTo) {
    const auto loop = Glib::MainLoop::create();
    Gtk::Window window;
    window.set_decorated(false);
    window.set_default_size(kWidth, kHeight);
    window.set_child(content);
    const FrameMeter meter(measured, scrollTo, [&] { loop->quit(); });
    window.present();
    loop->run();
}

class CachedNodes : public Gtk::Widget {
public:
    explicit CachedNodes(Glib::RefPtr<Gdk::Texture> icon)
        : Glib::ObjectBase("BenchCachedNodes")
        , icon_(std::move(icon)) {
        set_overflow(Gtk::Overflow::HIDDEN);
    }
    ~CachedNodes() override {
        for (auto& [row, node] : nodes_)
            gsk_render_node_unref(node);
    }
    void scrollTo(double offset) {
        offset_ = offset;
        queue_draw();
    }

protected:
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override {
        const GdkRGBA white{1, 1, 1, 1};
        const graphene_rect_t area = rectangle(0, 0, kWidth, kHeight);
        gtk_snapshot_append_color(snapshot->gobj(), &white, &area);
        const int first = static_cast<int>(offset_ / kRowHeight);
        for (int row = first; row < kRows && row * kRowHeight < offset_ + kHeight; ++row) {
            snapshot->save();
            const graphene_point_t place = point(0, row * kRowHeight - offset_);
            gtk_snapshot_translate(snapshot->gobj(), &place);
            gtk_snapshot_append_node(snapshot->gobj(), nodeFor(row));
            snapshot->restore();
        }
    }

private:
    GskRenderNode* nodeFor(int row) {
        GskRenderNode*& node = nodes_[row];
        if (node)
            return node;
        GtkSnapshot* snapshot = gtk_snapshot_new();
        const graphene_rect_t icon = rectangle(15, 15, 32, 32);
        gtk_snapshot_append_texture(snapshot, icon_->gobj(), &icon);
        const auto layout = create_pango_layout(rowName(row));
        layout->set_font_description(rowFont());
        layout->set_width(230 * PANGO_SCALE);
        layout->set_ellipsize(Pango::EllipsizeMode::END);
        const graphene_point_t place = point(60, 17);
        gtk_snapshot_translate(snapshot, &place);
        const GdkRGBA color{0.1F, 0.1F, 0.1F, 1};
        gtk_snapshot_append_layout(snapshot, layout->gobj(), &color);
        return node = gtk_snapshot_free_to_node(snapshot);
    }

    Glib::RefPtr<Gdk::Texture> icon_;
    std::unordered_map<int, GskRenderNode*> nodes_;
    double offset_ = 0;
};

Glib::RefPtr<Gtk::SignalListItemFactory> rowFactory(const Glib::RefPtr<Gdk::Texture>& icon) {
    auto factory = Gtk::SignalListItemFactory::create();
    factory->signal_setup().connect([icon](const Glib::RefPtr<Gtk::ListItem>& item) {
        auto* box = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 13);
        box->set_size_request(-1, kRowHeight);
        auto* picture = Gtk::make_managed<Gtk::Image>(icon);
        picture->set_pixel_size(32);
        picture->set_margin_start(15);
        auto* label = Gtk::make_managed<Gtk::Label>();
        label->set_xalign(0);
        label->set_ellipsize(Pango::EllipsizeMode::END);
        auto font = Pango::Attribute::create_attr_font_desc(rowFont());
        Pango::AttrList attributes;
        attributes.insert(font);
        label->set_attributes(attributes);
        box->append(*picture);
        box->append(*label);
        item->set_child(*box);
    });
    factory->signal_bind().connect([](const Glib::RefPtr<Gtk::ListItem>& item) {
        auto* label = dynamic_cast<Gtk::Label*>(item->get_child()->get_last_child());
        label->set_text(
            std::dynamic_pointer_cast<Gtk::StringObject>(item->get_item())->get_string());
    });
    return factory;
}

}

std::string rowName(int row) {
    char name[48];
    std::snprintf(name, sizeof name, "Some Show S%02dE%03d", row / 500 + 1, row % 500 + 1);
    return name;
}

FrameMeter::FrameMeter(Gtk::Widget& widget, std::function<void(double offset)> scrollTo,
                       std::function<void()> done)
    : widget_(widget)
    , scrollTo_(std::move(scrollTo))
    , done_(std::move(done)) {
    widget_.signal_realize().connect([this] {
        const auto clock = widget_.get_frame_clock();
        g_signal_connect(clock->gobj(), "before-paint", G_CALLBACK(&FrameMeter::begin), this);
        g_signal_connect(clock->gobj(), "after-paint", G_CALLBACK(&FrameMeter::end), this);
        widget_.add_tick_callback([this](const Glib::RefPtr<Gdk::FrameClock>&) { return tick(); });
    });
}

bool FrameMeter::tick() {
    if (frame_ == kWarmUpFrames)
        processStart_ = milliseconds(CLOCK_PROCESS_CPUTIME_ID);
    if (frame_ == kWarmUpFrames + kFrames) {
        const double whole = milliseconds(CLOCK_PROCESS_CPUTIME_ID) - processStart_;
        std::printf("%f %f\n", whole / kFrames, longest_);
        std::fflush(stdout);
        done_();
        return false;
    }
    ++frame_;
    scrollTo_(frame_ * kStep);
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
    std::vector<Glib::ustring> names;
    names.reserve(kRows);
    for (int row = 0; row < kRows; ++row)
        names.emplace_back(rowName(row));
    Gtk::ListView list(Gtk::NoSelection::create(Gtk::StringList::create(names)),
                       rowFactory(loadIcon(resources)));
    Gtk::ScrolledWindow scroller;
    scroller.set_child(list);
    runWindow(scroller, scroller,
              [&](double offset) { scroller.get_vadjustment()->set_value(offset); });
}

void runCachedNodes(const std::string& resources) {
    CachedNodes nodes(loadIcon(resources));
    runWindow(nodes, nodes, [&](double offset) { nodes.scrollTo(offset); });
}

}
