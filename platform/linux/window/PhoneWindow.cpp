#include "platform/linux/window/PhoneWindow.h"

#include "platform/host/EventLoop.h"
#include "platform/host/Host.h"
#include "platform/linux/NativeReference.h"
#include "platform/uikit/UIApplication.h"

#include <algorithm>
#include <cmath>
#ifdef GDK_WINDOWING_X11
#include <gdk/x11/gdkx.h>
#endif

namespace vistrel {

namespace {

constexpr int kScreenWidth = 320;
constexpr int kScreenHeight = 480;
constexpr double kShareOfMonitor = 0.9;
constexpr double kTurnSeconds = 0.3; ///< a film that cannot be played has gone by then

/// Null when there is none.
NativeReference<GdkMonitor> firstMonitor() {
    GListModel* monitors = gdk_display_get_monitors(gdk_display_get_default());
    return NativeReference<GdkMonitor>::adopt(GDK_MONITOR(g_list_model_get_item(monitors, 0)));
}

/// In halves, so that pictures made for whole scales stay sharp; never below 1.
double unitsPerPoint(double asked) {
    const auto monitor = firstMonitor();
    if (asked > 0 || !monitor)
        return asked > 0 ? asked : 1;
    GdkRectangle area;
    gdk_monitor_get_geometry(monitor.get(), &area);
    const double fits = std::min(area.width * kShareOfMonitor / kScreenWidth,
                                 area.height * kShareOfMonitor / kScreenHeight);
    return std::clamp(std::floor(fits * 2) / 2, 1.0, 2.0);
}

/// Without a window manager, the toolkit still looks for one to synchronise with at the start and
/// the end of each frame, and waits for the display's reply each time.
void drawFreelyWithoutWindowManager(GtkWidget* window) {
#ifdef GDK_WINDOWING_X11
    GdkSurface* surface = gtk_native_get_surface(GTK_NATIVE(window));
    if (!GDK_IS_X11_SURFACE(surface))
        return;
    GdkX11Screen* screen = gdk_x11_display_get_screen(gdk_surface_get_display(surface));
    const bool drawsInStep =
        gdk_x11_screen_supports_net_wm_hint(screen, g_intern_static_string("_NET_WM_FRAME_DRAWN"));
    gdk_x11_surface_set_frame_sync_enabled(surface, static_cast<gboolean>(drawsInStep));
#endif
}

}

double PhoneWindow::expectedPixelsPerPoint(double scale) {
    const auto monitor = firstMonitor();
    return unitsPerPoint(scale) * (monitor ? gdk_monitor_get_scale_factor(monitor.get()) : 1);
}

PhoneWindow::PhoneWindow(double scale)
    : window_(GTK_WINDOW(gtk_window_new())) {
    const double factor = unitsPerPoint(scale);
    screen_ = std::make_unique<ScreenWidget>(factor);
    input_ = std::make_unique<ScreenInput>(*screen_);
    gtk_window_set_title(window_, "Vistrel");
    // The screen paints the whole window.
    gtk_widget_remove_css_class(GTK_WIDGET(window_), "background");
    gtk_window_set_default_size(window_, static_cast<int>(std::lround(kScreenWidth * factor)),
                                static_cast<int>(std::lround(kScreenHeight * factor)));
    gtk_window_set_child(window_, screen_->widget());
    screen_->setTurnHandler([this](bool landscape) { turnSoon(landscape); });
    connections_.push_back(
        connectSignal<gboolean()>(window_, "close-request", [this] { return closeRequested(); }));
    connections_.push_back(connectSignal<void()>(
        window_, "realize", [this] { drawFreelyWithoutWindowManager(GTK_WIDGET(window_)); },
        SignalPhase::AfterDefault));
    for (const char* signal : {"map", "unmap"})
        connections_.push_back(connectSignal<void()>(
            window_, signal, [this] { stateChanged(); }, SignalPhase::AfterDefault));
    gtk_widget_grab_focus(screen_->widget());
    connections_.push_back(
        connectSignal<void(GParamSpec*)>(window_, "notify::focus-widget", [this](GParamSpec*) {
            input_->focusMoved(gtk_window_get_focus(window_));
        }));
}

PhoneWindow::~PhoneWindow() {
    // The application has ended already and must not be told of the window's end.
    connections_.clear();
    if (turning_ != 0)
        host::current().loop->cancel(turning_);
    input_.reset();
    screen_.reset();
    gtk_window_destroy(window_);
}

bool PhoneWindow::closeRequested() {
    if (close_)
        close_();
    return true;
}

void PhoneWindow::stateChanged() {
    // A window without focus may still be visible; only a hidden one has left the foreground.
    UIApplication::sharedApplication().setState(gtk_widget_get_mapped(GTK_WIDGET(window_)) != FALSE
                                                    ? UIApplicationState::Active
                                                    : UIApplicationState::Background);
}

void PhoneWindow::turnSoon(bool landscape) {
    host::EventLoop& loop = *host::current().loop;
    if (turning_ != 0)
        loop.cancel(turning_);
    turning_ = loop.schedule(kTurnSeconds, [this, landscape] {
        turning_ = 0;
        turn(landscape);
    });
}

void PhoneWindow::turn(bool landscape) {
    // The toolkit keeps it up to date when the user changes the window's size.
    int width = 0;
    int height = 0;
    gtk_window_get_default_size(window_, &width, &height);
    const bool isOwnSize = !gtk_window_is_maximized(window_) && !gtk_window_is_fullscreen(window_);
    if (landscape == lies_ || !isOwnSize || (landscape && width >= height))
        return;
    lies_ = landscape;
    gtk_window_set_default_size(window_, height, width);
}

void PhoneWindow::setIcon() {
    gtk_window_set_icon_name(window_, "org.vistrel.Vistrel");
}

void PhoneWindow::raise(const std::string& startupToken) {
    if (!startupToken.empty())
        gtk_window_set_startup_id(window_, startupToken.c_str());
    gtk_window_present(window_);
}

void PhoneWindow::setFirstFrameHandler(std::function<void()> handler) {
    screen_->setFirstFrameHandler(std::move(handler));
}

}
