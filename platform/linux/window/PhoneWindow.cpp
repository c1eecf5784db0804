#include "platform/linux/window/PhoneWindow.h"

#include "platform/host/EventLoop.h"
#include "platform/host/Host.h"
#include "platform/linux/NativeReference.h"
#include "platform/uikit/UIApplication.h"

#include <utility>
#ifdef GDK_WINDOWING_X11
#include <gdk/x11/gdkx.h>
#endif

namespace vistrel {

namespace {

constexpr double kTurnSeconds = 0.3; ///< a film that cannot be played has gone by then

/// Without a window manager, the toolkit still looks for one to synchronise with at the start and
/// the end of each frame, and waits for the display's reply each time.
void drawFreelyWithoutWindowManager(GtkWidget* window) {
#ifdef GDK_WINDOWING_X11
    GdkSurface* surface = gtk_native_get_surface(GTK_NATIVE(window));
    if (!GDK_IS_X11_SURFACE(surface))
        return;
    // The whole interface to this kind of display is deprecated.
    G_GNUC_BEGIN_IGNORE_DEPRECATIONS;
    GdkX11Screen* screen = gdk_x11_display_get_screen(gdk_surface_get_display(surface));
    const bool drawsInStep =
        gdk_x11_screen_supports_net_wm_hint(screen, g_intern_static_string("_NET_WM_FRAME_DRAWN"));
    gdk_x11_surface_set_frame_sync_enabled(surface, static_cast<gboolean>(drawsInStep));
    G_GNUC_END_IGNORE_DEPRECATIONS;
#endif
}

}

PhoneWindow::PhoneWindow(double scale)
    : window_(GTK_WINDOW(gtk_window_new()))
    , openedWith_(WindowSize::initial(scale)) {
    screen_ = std::make_unique<ScreenWidget>(openedWith_.unitsPerPoint());
    input_ = std::make_unique<ScreenInput>(*screen_);
    gtk_window_set_title(window_, "Vistrel");
    // The screen paints the whole window.
    gtk_widget_remove_css_class(GTK_WIDGET(window_), "background");
    gtk_window_set_default_size(window_, openedWith_.width, openedWith_.height);
    gtk_window_set_child(window_, screen_->widget());
    screen_->setTurnHandler([this](bool landscape) { turnSoon(landscape); });
    connections_.push_back(connectSignal<gboolean()>(
        window_, "close-request", [this] { return closeRequested(); }));
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
    WindowSize last = size();
    if (lies_)
        std::swap(last.width, last.height);
    if (hasOwnSize() && last != openedWith_)
        last.remember();
    if (turning_ != 0)
        host::current().loop->cancel(turning_);
    drop_.reset();
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
    const WindowSize now = size();
    if (landscape == lies_ || !hasOwnSize() || (landscape && now.width >= now.height))
        return;
    lies_ = landscape;
    gtk_window_set_default_size(window_, now.height, now.width);
}

WindowSize PhoneWindow::size() const {
    // The toolkit keeps it up to date when the user changes the window's size.
    WindowSize size{};
    gtk_window_get_default_size(window_, &size.width, &size.height);
    return size;
}

bool PhoneWindow::hasOwnSize() const {
    return !gtk_window_is_maximized(window_) && !gtk_window_is_fullscreen(window_);
}

void PhoneWindow::setIcon() {
    gtk_window_set_icon_name(window_, "org.vistrel.Vistrel");
}

void PhoneWindow::raise(const std::string& startupToken) {
    if (!startupToken.empty())
        gtk_window_set_startup_id(window_, startupToken.c_str());
    gtk_window_present(window_);
}

void PhoneWindow::setDropHandler(FileDrop::Dropped handler) {
    drop_ = std::make_unique<FileDrop>(screen_->widget(), std::move(handler));
}

void PhoneWindow::setFirstFrameHandler(std::function<void()> handler) {
    screen_->setFirstFrameHandler(std::move(handler));
}

}
