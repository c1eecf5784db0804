#pragma once
#include "platform/host/Display.h"
#include "platform/host/EventLoop.h"
#include "tests/support/Testing.h"

namespace vistrel::support {

/// A frame clock of 60 frames a second on the virtual clock. Frames are made only on request.
class ManualDisplay : public host::Display {
public:
    explicit ManualDisplay(host::EventLoop& loop)
        : loop_(loop) {}

    void requestFrame() override {
        constexpr double kFramesPerSecond = 60;
        if (std::exchange(asked_, true))
            return;
        const double now = loop_.now();
        const double next = (std::floor(now * kFramesPerSecond + 1e-6) + 1) / kFramesPerSecond;
        loop_.schedule(next - now, [this] {
            asked_ = false;
            ++frames_;
            if (const auto handler = handler_)
                handler(loop_.now());
        });
    }
    void setFrameHandler(std::function<void(double now)> handler) override {
        handler_ = std::move(handler);
    }
    double scale() const override { return scale_; }
    void close() override { closed_ = true; }
    void toggleFullScreen() override { fullScreen_ = !fullScreen_; }
    bool isInFront() const override { return inFront_; }
    void announce(const std::string& text) override { announcements.push_back(text); }

    std::vector<std::string> announcements;

    bool isClosed() const { return closed_; }
    bool isFullScreen() const { return fullScreen_; }
    int frames() const { return frames_; }
    bool frameIsAskedFor() const { return asked_; }
    void setScale(double scale) { scale_ = scale; }
    void setInFront(bool inFront) { inFront_ = inFront; }

private:
    host::EventLoop& loop_;
    std::function<void(double now)> handler_;
    double scale_ = 1;
    int frames_ = 0;
    bool asked_ = false;
    bool closed_ = false;
    bool fullScreen_ = false;
    bool inFront_ = true;
};

}
