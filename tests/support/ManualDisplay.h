#pragma once
#include "platform/host/Display.h"

#include <utility>

namespace vistrel::host {
class EventLoop;
}

namespace vistrel::support {

/// A frame clock of 60 frames a second on the virtual clock. Frames are made only on request.
class ManualDisplay : public host::Display {
public:
    explicit ManualDisplay(host::EventLoop& loop)
        : loop_(loop) {}

    void requestFrame() override;
    void setFrameHandler(std::function<void(double now)> handler) override {
        handler_ = std::move(handler);
    }
    double scale() const override { return scale_; }

    void close() override { closed_ = true; }
    void toggleFullScreen() override { fullScreen_ = !fullScreen_; }

    bool isClosed() const { return closed_; }
    bool isFullScreen() const { return fullScreen_; }
    int frames() const { return frames_; }
    bool frameIsAskedFor() const { return asked_; }
    void setScale(double scale) { scale_ = scale; }

private:
    host::EventLoop& loop_;
    std::function<void(double now)> handler_;
    double scale_ = 1;
    int frames_ = 0;
    bool asked_ = false;
    bool closed_ = false;
    bool fullScreen_ = false;
};

}
