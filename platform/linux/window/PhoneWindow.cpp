#include "platform/linux/window/PhoneWindow.h"

#include "platform/uikit/UIApplication.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

constexpr int kScreenWidth = 320;
constexpr int kScreenHeight = 480;
constexpr double kShareOfMonitor = 0.9;

/// In halves, so that pictures made for whole scales stay good; never below 1.
double scaleThatFitsMonitor() {
    const auto monitors = Gdk::Display::get_default()->get_monitors();
    if (monitors->get_n_items() == 0)
        return 1;
    const auto monitor = std::dynamic_pointer_cast<Gdk::Monitor>(monitors->get_object(0));
    Gdk::Rectangle area;
    monitor->get_geometry(area);
    const double fits = std::min(area.get_width() * kShareOfMonitor / kScreenWidth,
                                 area.get_height() * kShareOfMonitor / kScreenHeight);
    return std::clamp(std::floor(fits * 2) / 2, 1.0, 2.0);
}

}

PhoneWindow::PhoneWindow(double scale)
    : input_(screen_) {
    const double factor = scale > 0 ? scale : scaleThatFitsMonitor();
    window_.set_title("Vistrel");
    window_.set_default_size(static_cast<int>(std::lround(kScreenWidth * factor)),
                             static_cast<int>(std::lround(kScreenHeight * factor)));
    window_.set_child(screen_);
    window_.signal_close_request().connect(
        [this] {
            if (close_)
                close_();
            return true;
        },
        false);
    stateSignals_ = {window_.signal_map().connect([this] { reportState(); }),
                     window_.signal_unmap().connect([this] { reportState(); })};
    screen_.grab_focus();
}

PhoneWindow::~PhoneWindow() {
    // The application has ended before its window: it must not hear of the window's end.
    for (auto& signal : stateSignals_)
        signal.disconnect();
}

void PhoneWindow::setIcon() {
    window_.set_icon_name("org.vistrel.Vistrel");
}

void PhoneWindow::setFirstFrameHandler(std::function<void()> handler) {
    screen_.setFirstFrameHandler(std::move(handler));
}

void PhoneWindow::reportState() {
    // A window in the background is still seen; only one that is put away has left the foreground.
    UIApplication::sharedApplication().setState(
        window_.get_mapped() ? UIApplicationState::Active : UIApplicationState::Background);
}

}
