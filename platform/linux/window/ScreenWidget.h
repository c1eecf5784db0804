#pragma once
#include "platform/host/Display.h"
#include "platform/linux/window/AccessibleChildren.h"
#include "platform/linux/window/ForeignChildren.h"
#include "platform/linux/window/PictureNodes.h"

#include <gtkmm.h>

#include <functional>
#include <string>

namespace vistrel {

/// The one widget of the window: shows the phone's screen, scaled to fit, and hands its touches and
/// keys to the application. It is also the layer's display: frames are made only when asked for.
class ScreenWidget : public Gtk::Widget, public host::Display {
public:
    ScreenWidget();
    ~ScreenWidget() override;

    void requestFrame() override;
    void setFrameHandler(std::function<void(double now)> handler) override;
    double scale() const override;
    bool saveScreenshot(const std::string& machinePath) override;
    unsigned framesDrawn() const override { return framesDrawn_; }

    /// Called once, after the first frame is on screen.
    void setFirstFrameHandler(std::function<void()> handler) { firstFrame_ = std::move(handler); }
    /// Points of the screen to coordinates of this widget.
    CGAffineTransform screenTransform() const;

protected:
    Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;
    void on_realize() override;

private:
    bool frameTick();
    void scaleMayHaveChanged();
    /// Whether the view tree shows foreign content.
    bool drawScreen(GtkSnapshot* snapshot);
    void placeForeign();
    void describeLater();
    /// Black where the window is wider or higher than the phone's screen.
    void fillBeside(GtkSnapshot* snapshot) const;

    PictureNodes nodes_;
    ForeignChildren foreign_;
    AccessibleChildren accessible_;
    std::function<void(double)> frameHandler_;
    std::function<void()> firstFrame_;
    unsigned tick_ = 0;
    std::uint64_t describing_ = 0;
    unsigned framesDrawn_ = 0;
    bool sawForeign_ = false;
};

}
