#pragma once
#include "platform/linux/window/ScreenInput.h"
#include "platform/linux/window/ScreenWidget.h"

#include <gtkmm.h>

#include <functional>
#include <vector>

namespace vistrel {

/// The one window, with the phone's screen in it. Tells the application when it becomes active and
/// when it is hidden.
class PhoneWindow {
public:
    /// Pixels per point at the start; 0 picks what fits the monitor.
    explicit PhoneWindow(double scale);
    ~PhoneWindow();
    PhoneWindow(const PhoneWindow&) = delete;
    PhoneWindow& operator=(const PhoneWindow&) = delete;

    ScreenWidget& screen() { return screen_; }
    void setFirstFrameHandler(std::function<void()> handler);
    void setCloseHandler(std::function<void()> handler) { close_ = std::move(handler); }
    /// Reads the icon theme, which takes a while: after the first frame.
    void setIcon();
    void present() { window_.present(); }

private:
    void reportState();

    Gtk::Window window_;
    ScreenWidget screen_;
    ScreenInput input_;
    std::function<void()> close_;
    std::vector<sigc::connection> stateSignals_;
};

}
