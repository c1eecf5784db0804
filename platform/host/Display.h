#pragma once
#include <functional>
#include <string>

namespace vistrel::host {

/// The window's frame clock. Frames are made only on request.
class Display {
public:
    virtual ~Display() = default;
    /// Requests one frame; further requests before it comes change nothing.
    virtual void requestFrame() = 0;
    /// Called for each frame with the loop's monotonic time, before the view tree is walked.
    virtual void setFrameHandler(std::function<void(double now)> handler) = 0;
    /// Pixels per point at which pictures are painted.
    virtual double scale() const = 0;
    /// Writes what is on the screen now, foreign content included, as a PNG at a machine path.
    virtual bool saveScreenshot(const std::string& /*machinePath*/) { return false; }
    /// Asks the window to close, as its close button does.
    virtual void close() {}
    virtual void toggleFullScreen() {}
    /// Whether the window has the keyboard; else others may cover it.
    virtual bool isInFront() const = 0;
    /// Has screen readers say what no element shows. Nothing where the toolkit cannot.
    virtual void announce(const std::string& /*text*/) {}
    enum class TextEntry { None, Text, Secret };
    /// What keys are typed into now, for input methods and on-screen keyboards.
    virtual void textEntryChanged(TextEntry /*entry*/) {}
    /// Frames drawn since the start.
    virtual unsigned framesDrawn() const { return 0; }
};

}
