#include "platform/linux/window/ScreenWidget.h"

#include "platform/graphics/UIImage.h"
#include "platform/host/Desktop.h"
#include "platform/host/EventLoop.h"
#include "platform/host/ForeignContent.h"
#include "platform/host/Host.h"
#include "platform/linux/window/ForeignPlacement.h"
#include "platform/linux/window/GraphenePlaces.h"
#include "platform/linux/window/GtkForeignContent.h"
#include "platform/linux/window/GtkSceneVisitor.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIView.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vistrel {

namespace {

constexpr CGSize kScreen = ScreenPlacement::kScreen;
constexpr double kDescribeSeconds = 0.2;     ///< after the last frame
constexpr double kMostDescribeSeconds = 1.0; ///< while frames keep coming

bool isTurnedByHand() {
    const std::string& model = host::current().device->identity().model;
    return model == "Handset" || model == "Tablet";
}

}

struct ScreenWidget::Instance {
    GtkWidget parent;
    ScreenWidget* owner; ///< null if the widget outlives it
};

struct ScreenWidget::Class {
    GtkWidgetClass parent;
};

GType ScreenWidget::type() {
    static const GType type =
        g_type_register_static_simple(GTK_TYPE_WIDGET, "VistrelScreen", sizeof(Class), initClass,
                                      sizeof(Instance), nullptr, static_cast<GTypeFlags>(0));
    return type;
}

void ScreenWidget::initClass(gpointer widgetClass, gpointer) {
    auto* functions = GTK_WIDGET_CLASS(widgetClass);
    functions->get_request_mode = requestMode;
    functions->measure = measure;
    functions->size_allocate = sizeAllocate;
    functions->snapshot = snapshot;
    functions->realize = realize;
}

ScreenWidget* ScreenWidget::of(GtkWidget* widget) {
    return reinterpret_cast<Instance*>(widget)->owner;
}

ScreenWidget::ScreenWidget(double unitsPerPoint)
    : widget_(GTK_WIDGET(g_object_ref_sink(g_object_new(type(), nullptr))))
    , expectedUnitsPerPoint_(unitsPerPoint)
    , foreign_(widget_)
    , accessible_(widget_) {
    reinterpret_cast<Instance*>(widget_)->owner = this;
    gtk_widget_set_focusable(widget_, TRUE);
    gtk_widget_set_overflow(widget_, GTK_OVERFLOW_HIDDEN);
}

ScreenWidget::~ScreenWidget() {
    if (tick_ != 0)
        gtk_widget_remove_tick_callback(widget_, tick_);
    if (describing_ != 0)
        host::current().loop->cancel(describing_);
    foreign_.clear();
    accessible_.clear();
    reinterpret_cast<Instance*>(widget_)->owner = nullptr;
    g_object_unref(widget_);
}

void ScreenWidget::requestFrame() {
    if (tick_ == 0)
        tick_ = gtk_widget_add_tick_callback(widget_, ticked, this, nullptr);
}

gboolean ScreenWidget::ticked(GtkWidget*, GdkFrameClock*, gpointer self) {
    auto* screen = static_cast<ScreenWidget*>(self);
    screen->tick_ = 0;
    screen->frameTick();
    return G_SOURCE_REMOVE;
}

void ScreenWidget::frameTick() {
    if (frameHandler_)
        frameHandler_(host::current().loop->now());
    turnUpright();
    if (sawForeign_ || !foreign_.isEmpty())
        placeForeign();
    gtk_widget_queue_draw(widget_);
    describeLater();
}

void ScreenWidget::turnUpright() {
    auto& application = UIApplication::sharedApplication();
    const auto wanted = application.statusBarOrientation();
    const bool lies = UIInterfaceOrientationIsLandscape(wanted);
    // The screen that a landscape one slides over is still upright.
    if (wanted == upright_ || (lies && application.events().isIgnoringInteraction()) ||
        isTurnedByHand())
        return;
    upright_ = wanted;
    gtk_widget_queue_allocate(widget_);
    if (turned_)
        turned_(lies);
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
    gtk_widget_queue_allocate(widget_);
    if (hadFocus && !foreign_.hasFocus())
        gtk_widget_grab_focus(widget_);
}

void ScreenWidget::describeLater() {
    // Once movement has ended: screen readers need not follow a scrolling list. A film keeps
    // moving, so its position is read at intervals.
    const double now = host::current().loop->now();
    if (describing_ == 0)
        describeBy_ = now + kMostDescribeSeconds;
    describeAt_ = std::min(now + kDescribeSeconds, describeBy_);
    if (describing_ == 0)
        waitToDescribe(kDescribeSeconds);
}

void ScreenWidget::waitToDescribe(double seconds) {
    describing_ = host::current().loop->schedule(
        seconds,
        [this] {
            describing_ = 0;
            // Later frames have postponed it.
            const double left = describeAt_ - host::current().loop->now();
            if (left > 0)
                waitToDescribe(left);
            else
                describe();
        });
}

void ScreenWidget::describe() {
    const auto elements = accessibilityTree(UIApplication::sharedApplication().screenView());
    if (accessible_.update(elements, screenTransform()))
        gtk_widget_queue_allocate(widget_);
    followFocus(GTK_DIR_TAB_FORWARD);
}

GtkWidget* ScreenWidget::focusedPage() const {
    const auto part = UIApplication::sharedApplication().events().focusedPart();
    auto* content = part ? dynamic_cast<GtkForeignContent*>(part->foreignContent()) : nullptr;
    GtkWidget* page = content ? content->widget() : nullptr;
    return page && gtk_widget_get_parent(page) == widget_ ? page : nullptr;
}

void ScreenWidget::followFocus(GtkDirectionType direction) {
    GtkRoot* root = gtk_widget_get_root(widget_);
    if (!root)
        return;
    GtkWidget* focused = gtk_root_get_focus(root);
    if (GtkWidget* page = focusedPage()) {
        if (!focused || (focused != page && !gtk_widget_is_ancestor(focused, page)))
            gtk_widget_child_focus(page, direction);
        return;
    }
    const auto part = UIApplication::sharedApplication().events().focusedPart();
    GtkWidget* spoken = part ? accessible_.widgetOf(*part) : nullptr;
    GtkWidget* wanted = spoken ? spoken : widget_;
    if (focused != wanted)
        gtk_widget_grab_focus(wanted);
}

void ScreenWidget::close() {
    if (GtkRoot* root = gtk_widget_get_root(widget_))
        gtk_window_close(GTK_WINDOW(root));
}

void ScreenWidget::toggleFullScreen() {
    GtkRoot* root = gtk_widget_get_root(widget_);
    if (!root)
        return;
    if (gtk_window_is_fullscreen(GTK_WINDOW(root)))
        gtk_window_unfullscreen(GTK_WINDOW(root));
    else
        gtk_window_fullscreen(GTK_WINDOW(root));
}

void ScreenWidget::textEntryChanged(TextEntry entry) {
    if (textEntryChanged_)
        textEntryChanged_(entry);
}

bool ScreenWidget::isInFront() const {
    GtkRoot* root = gtk_widget_get_root(widget_);
    return root && gtk_widget_get_mapped(widget_) && gtk_window_is_active(GTK_WINDOW(root));
}

void ScreenWidget::announce([[maybe_unused]] const std::string& text) {
#if GTK_CHECK_VERSION(4, 14, 0)
    gtk_accessible_announce(GTK_ACCESSIBLE(widget_), text.c_str(),
                            GTK_ACCESSIBLE_ANNOUNCEMENT_PRIORITY_MEDIUM);
#endif
}

void ScreenWidget::setFrameHandler(std::function<void(double now)> handler) {
    frameHandler_ = std::move(handler);
}

double ScreenWidget::scale() const {
    const double factor = width() > 0 ? placement().unitsPerPoint() : expectedUnitsPerPoint_;
    return factor * gtk_widget_get_scale_factor(widget_);
}

ScreenPlacement ScreenWidget::placement() const {
    return {CGSize{static_cast<double>(width()), static_cast<double>(height())}, upright_};
}

GtkSizeRequestMode ScreenWidget::requestMode(GtkWidget*) {
    return GTK_SIZE_REQUEST_CONSTANT_SIZE;
}

void ScreenWidget::measure(GtkWidget*, GtkOrientation orientation, int, int* minimum, int* natural,
                           int* minimumBaseline, int* naturalBaseline) {
    *natural = static_cast<int>(orientation == GTK_ORIENTATION_HORIZONTAL ? kScreen.width
                                                                          : kScreen.height);
    *minimum = *natural / 2;
    *minimumBaseline = *naturalBaseline = -1;
}

void ScreenWidget::sizeAllocate(GtkWidget* widget, int, int, int) {
    if (auto* screen = of(widget)) {
        screen->scaleMayHaveChanged();
        screen->foreign_.allocate();
        screen->accessible_.allocate();
    }
}

void ScreenWidget::scaleMayHaveChanged() {
    if (UIImage::screenScale() == scale())
        return;
    UIImage::setScreenScale(scale());
    requestFrame();
}

void ScreenWidget::realize(GtkWidget* widget) {
    GTK_WIDGET_CLASS(g_type_class_peek(GTK_TYPE_WIDGET))->realize(widget);
    GskRenderer* renderer = gtk_native_get_renderer(gtk_widget_get_native(widget));
    if (auto* screen = of(widget))
        screen->nodes_.setSoftwareRenderer(
            g_str_equal(G_OBJECT_TYPE_NAME(renderer), "GskCairoRenderer"));
}

void ScreenWidget::snapshot(GtkWidget* widget, GtkSnapshot* snapshot) {
    if (auto* screen = of(widget))
        screen->drawFrame(snapshot);
}

void ScreenWidget::drawFrame(GtkSnapshot* snapshot) {
    const bool seesForeign = drawScreen(snapshot);
    if (nodes_.isForSoftwareRenderer())
        uploads_.keepFor(widget_);
    // New children have no allocation yet; they get one in the next frame.
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
    recording_.begin(gtk_widget_get_scale_factor(widget_));
    recording_.pushTransform(screenTransform());
    recording_.pushClip(CGRectMake(0, 0, kScreen.width, kScreen.height));
    UIApplication::sharedApplication().walkScreen(recording_);
    recording_.pop();
    recording_.pop();
    recording_.finish();
    GtkSceneVisitor visitor(widget_, snapshot, nodes_);
    visitor.draw(recording_);
    return visitor.sawForeign();
}

void ScreenWidget::fillBeside(GtkSnapshot* snapshot) const {
    if (placement().fillsWindow())
        return;
    const GdkRGBA black{0, 0, 0, 1};
    const graphene_rect_t bounds =
        grapheneRectangle(0, 0, static_cast<float>(width()), static_cast<float>(height()));
    gtk_snapshot_append_color(snapshot, &black, &bounds);
}

bool ScreenWidget::saveScreenshot(const std::string& machinePath) {
    GtkNative* native = gtk_widget_get_native(widget_);
    if (!native || width() == 0)
        return false;
    // Drawn now: the toolkit's last frame may be older than the view tree.
    GtkSnapshot* snapshot = gtk_snapshot_new();
    drawScreen(snapshot);
    GskRenderNode* node = gtk_snapshot_free_to_node(snapshot);
    if (!node)
        return false;
    const graphene_rect_t viewport =
        grapheneRectangle(0, 0, static_cast<float>(width()), static_cast<float>(height()));
    GdkTexture* texture =
        gsk_renderer_render_texture(gtk_native_get_renderer(native), node, &viewport);
    const bool saved = gdk_texture_save_to_png(texture, machinePath.c_str());
    g_object_unref(texture);
    gsk_render_node_unref(node);
    return saved;
}

}
