#include "platform/linux/window/ScreenWidget.h"

#include "platform/graphics/UIImage.h"
#include "platform/host/EventLoop.h"
#include "platform/host/Host.h"
#include "platform/linux/window/ForeignPlacement.h"
#include "platform/linux/window/GraphenePlaces.h"
#include "platform/linux/window/GtkSceneVisitor.h"
#include "platform/uikit/UIApplication.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

constexpr double kScreenWidth = 320;
constexpr double kScreenHeight = 480;
constexpr double kDescribeSeconds = 0.2; ///< after the last frame

}

ScreenWidget::ScreenWidget()
    : Glib::ObjectBase("VistrelScreen")
    , foreign_(GTK_WIDGET(gobj()))
    , accessible_(GTK_WIDGET(gobj())) {
    set_focusable(true);
    set_overflow(Gtk::Overflow::HIDDEN);
}

ScreenWidget::~ScreenWidget() {
    if (tick_ != 0)
        remove_tick_callback(tick_);
    if (describing_ != 0)
        host::current().loop->cancel(describing_);
    foreign_.clear();
    accessible_.clear();
}

void ScreenWidget::requestFrame() {
    if (tick_ == 0)
        tick_ = add_tick_callback([this](const Glib::RefPtr<Gdk::FrameClock>&) {
            tick_ = 0;
            return frameTick();
        });
}

bool ScreenWidget::frameTick() {
    if (frameHandler_)
        frameHandler_(host::current().loop->now());
    if (sawForeign_ || !foreign_.isEmpty())
        placeForeign();
    queue_draw();
    describeLater();
    return false;
}

void ScreenWidget::placeForeign() {
    // Foreign widgets get their places in the layout phase, which follows this one.
    ForeignPlacement placement;
    placement.pushTransform(screenTransform());
    UIApplication::sharedApplication().walkScreen(placement);
    placement.pop();
    const bool hadFocus = foreign_.hasFocus();
    if (!foreign_.update(placement, scale()))
        return;
    queue_allocate();
    if (hadFocus && !foreign_.hasFocus())
        grab_focus();
}

void ScreenWidget::describeLater() {
    // Once movement has ended: nobody follows a list's names while it rolls.
    auto& loop = *host::current().loop;
    loop.cancel(describing_);
    describing_ = loop.schedule(kDescribeSeconds, [this] {
        describing_ = 0;
        const auto elements = accessibilityTree(UIApplication::sharedApplication().screenView());
        if (accessible_.update(elements, screenTransform()))
            queue_allocate();
    });
}

void ScreenWidget::setFrameHandler(std::function<void(double now)> handler) {
    frameHandler_ = std::move(handler);
}

double ScreenWidget::scale() const {
    const double factor = std::min(get_width() / kScreenWidth, get_height() / kScreenHeight);
    return factor <= 0 ? 1 : factor * get_scale_factor();
}

CGAffineTransform ScreenWidget::screenTransform() const {
    const double factor =
        std::max(0.01, std::min(get_width() / kScreenWidth, get_height() / kScreenHeight));
    const double left = std::floor((get_width() - kScreenWidth * factor) / 2);
    const double top = std::floor((get_height() - kScreenHeight * factor) / 2);
    return {factor, 0, 0, factor, left, top};
}

Gtk::SizeRequestMode ScreenWidget::get_request_mode_vfunc() const {
    return Gtk::SizeRequestMode::CONSTANT_SIZE;
}

void ScreenWidget::measure_vfunc(Gtk::Orientation orientation, int, int& minimum, int& natural,
                                 int& minimumBaseline, int& naturalBaseline) const {
    const bool horizontal = orientation == Gtk::Orientation::HORIZONTAL;
    minimum = static_cast<int>(horizontal ? kScreenWidth : kScreenHeight) / 2;
    natural = static_cast<int>(horizontal ? kScreenWidth : kScreenHeight);
    minimumBaseline = naturalBaseline = -1;
}

void ScreenWidget::size_allocate_vfunc(int, int, int) {
    scaleMayHaveChanged();
    foreign_.allocate();
    accessible_.allocate();
}

void ScreenWidget::scaleMayHaveChanged() {
    if (UIImage::screenScale() == scale())
        return;
    UIImage::setScreenScale(scale());
    requestFrame();
}

void ScreenWidget::on_realize() {
    Gtk::Widget::on_realize();
    GskRenderer* renderer = gtk_native_get_renderer(gtk_widget_get_native(GTK_WIDGET(gobj())));
    nodes_.setSoftwareRenderer(g_str_equal(G_OBJECT_TYPE_NAME(renderer), "GskCairoRenderer"));
}

void ScreenWidget::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    const bool seesForeign = drawScreen(snapshot->gobj());
    // What has come new has no place yet; the next frame gives it one.
    if (seesForeign && !sawForeign_)
        requestFrame();
    sawForeign_ = seesForeign;
    nodes_.frameEnded();
    ++framesDrawn_;
    if (const auto firstFrame = std::exchange(firstFrame_, nullptr))
        host::current().loop->schedule(0, firstFrame);
}

bool ScreenWidget::drawScreen(GtkSnapshot* snapshot) {
    fillBeside(snapshot);
    GtkSceneVisitor visitor(GTK_WIDGET(gobj()), snapshot, nodes_);
    visitor.pushTransform(screenTransform());
    visitor.pushClip(CGRectMake(0, 0, kScreenWidth, kScreenHeight));
    UIApplication::sharedApplication().walkScreen(visitor);
    visitor.pop();
    visitor.pop();
    return visitor.sawForeign();
}

void ScreenWidget::fillBeside(GtkSnapshot* snapshot) const {
    const CGAffineTransform place = screenTransform();
    if (place.tx == 0 && place.ty == 0 && kScreenWidth * place.a >= get_width() &&
        kScreenHeight * place.d >= get_height())
        return;
    const GdkRGBA black{0, 0, 0, 1};
    const graphene_rect_t bounds =
        grapheneRectangle(0, 0, static_cast<float>(get_width()), static_cast<float>(get_height()));
    gtk_snapshot_append_color(snapshot, &black, &bounds);
}

bool ScreenWidget::saveScreenshot(const std::string& machinePath) {
    GtkWidget* self = GTK_WIDGET(gobj());
    GtkNative* native = gtk_widget_get_native(self);
    if (!native || get_width() == 0)
        return false;
    // Drawn here and now: what the toolkit has drawn last may be older than the view tree.
    GtkSnapshot* snapshot = gtk_snapshot_new();
    drawScreen(snapshot);
    GskRenderNode* node = gtk_snapshot_free_to_node(snapshot);
    if (!node)
        return false;
    const graphene_rect_t viewport =
        grapheneRectangle(0, 0, static_cast<float>(get_width()), static_cast<float>(get_height()));
    GdkTexture* texture =
        gsk_renderer_render_texture(gtk_native_get_renderer(native), node, &viewport);
    const bool saved = gdk_texture_save_to_png(texture, machinePath.c_str());
    g_object_unref(texture);
    gsk_render_node_unref(node);
    return saved;
}

}
