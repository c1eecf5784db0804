#pragma once
#include "platform/linux/NativeCallback.h"
#include "platform/linux/window/FileDrop.h"
#include "platform/linux/window/ScreenInput.h"
#include "platform/linux/window/ScreenWidget.h"
#include "platform/linux/window/WindowSize.h"

#include <gtk/gtk.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vistrel {

/// The one window, which shows the phone's screen. Tells the application when it is shown and
/// hidden.
class PhoneWindow {
public:
    /// `scale` as in WindowSize::initial().
    explicit PhoneWindow(double scale);
    ~PhoneWindow();
    PhoneWindow(const PhoneWindow&) = delete;
    PhoneWindow& operator=(const PhoneWindow&) = delete;

    ScreenWidget& screen() { return *screen_; }
    void setFirstFrameHandler(std::function<void()> handler);
    void setCloseHandler(std::function<void()> handler) { close_ = std::move(handler); }
    /// Called with the address of each file that is dropped on the window.
    void setDropHandler(FileDrop::Dropped handler);
    /// Slow, because it reads the icon theme: call it after the first frame.
    void setIcon();
    /// Asks the desktop to bring it to the front; `startupToken` is the desktop's permission.
    void raise(const std::string& startupToken);
    void present() { gtk_window_present(window_); }

private:
    bool closeRequested();
    void stateChanged();
    /// Exchanges width and height once that is settled, where the desktop lets the window have its
    /// own size.
    void turnSoon(bool landscape);
    void turn(bool landscape);
    WindowSize size() const;
    /// Neither maximised nor full screen.
    bool hasOwnSize() const;

    GtkWindow* window_;
    WindowSize openedWith_;
    std::unique_ptr<ScreenWidget> screen_;
    std::unique_ptr<ScreenInput> input_;
    std::unique_ptr<FileDrop> drop_;
    std::function<void()> close_;
    std::uint64_t turning_ = 0;
    bool lies_ = false; ///< width and height are exchanged
    std::vector<SignalConnection> connections_;
};

}
