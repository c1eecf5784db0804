#pragma once
#include <functional>

namespace vistrel {

/// Calls an action before each frame while started, for movement without a finger: momentum,
/// animations. Frames are requested only while a link runs. Main thread only.
class CADisplayLink {
public:
    /// `action` gets the frame's time, monotonic seconds. It may start and stop any link.
    explicit CADisplayLink(std::function<void(double now)> action);
    ~CADisplayLink();
    CADisplayLink(const CADisplayLink&) = delete;
    CADisplayLink& operator=(const CADisplayLink&) = delete;

    void start();
    void stop();
    bool isRunning() const { return running_; }

    /// The display's frame handler. Starting a link installs it on the host's display.
    static void fire(double now);

private:
    std::function<void(double)> action_;
    bool running_ = false;
};

}
