#pragma once
#include "platform/host/Display.h"
#include "platform/linux/window/AccessibleChildren.h"
#include "platform/linux/window/ForeignChildren.h"
#include "platform/linux/window/PictureNodes.h"
#include "platform/linux/window/SceneRecording.h"
#include "platform/linux/window/ScreenPlacement.h"
#include "platform/linux/window/UploadMemory.h"

#include <gtk/gtk.h>

#include <functional>
#include <string>

namespace vistrel {

/// The window's widget: shows the phone's screen scaled to fit. It is also the display of the host:
/// frames are drawn only on request.
class ScreenWidget : public host::Display {
public:
    /// `unitsPerPoint` is used until the widget has a size: the application draws its first
    /// pictures before that.
    explicit ScreenWidget(double unitsPerPoint);
    ~ScreenWidget() override;
    ScreenWidget(const ScreenWidget&) = delete;
    ScreenWidget& operator=(const ScreenWidget&) = delete;

    /// The native widget.
    GtkWidget* widget() const { return widget_; }

    void requestFrame() override;
    void setFrameHandler(std::function<void(double now)> handler) override;
    double scale() const override;
    bool saveScreenshot(const std::string& machinePath) override;
    unsigned framesDrawn() const override { return framesDrawn_; }

    /// Called when a machine that is not turned by hand shows landscape instead of portrait, or
    /// portrait again.
    void setTurnHandler(std::function<void(bool landscape)> handler) {
        turned_ = std::move(handler);
    }
    /// Called once, after the first frame is on screen.
    void setFirstFrameHandler(std::function<void()> handler) { firstFrame_ = std::move(handler); }
    void close() override;
    void toggleFullScreen() override;
    bool isInFront() const override;
    void textEntryChanged(TextEntry entry) override;
    void setTextEntryHandler(std::function<void(TextEntry)> handler) {
        textEntryChanged_ = std::move(handler);
    }
    /// Nothing before GTK 4.14.
    void announce(const std::string& text) override;

    /// Gives the toolkit's focus to the widget that stands for what keys act on.
    void followFocus(GtkDirectionType direction);
    /// The page that keys act on; null for none.
    GtkWidget* focusedPage() const;
    /// Whether a page has the toolkit's focus.
    bool pageHasFocus() const { return foreign_.hasFocus(); }
    /// From points of the screen to coordinates of this widget.
    CGAffineTransform screenTransform() const { return placement().transform(); }

private:
    struct Instance;
    struct Class;
    static GType type();
    static void initClass(gpointer widgetClass, gpointer);
    static ScreenWidget* of(GtkWidget* widget);
    static GtkSizeRequestMode requestMode(GtkWidget* widget);
    static void measure(GtkWidget* widget, GtkOrientation orientation, int forSize, int* minimum,
                        int* natural, int* minimumBaseline, int* naturalBaseline);
    static void sizeAllocate(GtkWidget* widget, int width, int height, int baseline);
    static void snapshot(GtkWidget* widget, GtkSnapshot* snapshot);
    static void realize(GtkWidget* widget);
    static gboolean ticked(GtkWidget* widget, GdkFrameClock* clock, gpointer self);

    int width() const { return gtk_widget_get_width(widget_); }
    int height() const { return gtk_widget_get_height(widget_); }
    ScreenPlacement placement() const;
    void frameTick();
    void turnUpright();
    void drawFrame(GtkSnapshot* snapshot);
    void scaleMayHaveChanged();
    /// Whether the view tree shows foreign content.
    bool drawScreen(GtkSnapshot* snapshot);
    void placeForeign();
    void describeLater();
    void waitToDescribe(double seconds);
    void describe();
    /// Black where the window is wider or taller than the phone's screen.
    void fillBeside(GtkSnapshot* snapshot) const;

    GtkWidget* widget_;
    double expectedUnitsPerPoint_;
    PictureNodes nodes_;
    UploadMemory uploads_;
    SceneRecording recording_; ///< of the last frame
    ForeignChildren foreign_;
    AccessibleChildren accessible_;
    std::function<void(double)> frameHandler_;
    std::function<void()> firstFrame_;
    std::function<void(bool)> turned_;
    std::function<void(TextEntry)> textEntryChanged_;
    UIInterfaceOrientation upright_ = UIInterfaceOrientation::Portrait;
    unsigned tick_ = 0;
    std::uint64_t describing_ = 0;
    double describeAt_ = 0; ///< seconds of the loop
    double describeBy_ = 0; ///< at the latest
    unsigned framesDrawn_ = 0;
    bool sawForeign_ = false;
};

}
