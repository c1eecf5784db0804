#pragma once
#include <cstdint>
#include <functional>

namespace vistrel::host {

/// The one loop on which everything runs, and its clocks. Single-threaded.
class EventLoop {
public:
    using Token = std::uint64_t; ///< 0 is never returned.

    virtual ~EventLoop() = default;

    /// Monotonic time in seconds; the origin is arbitrary.
    virtual double now() const = 0;
    /// Seconds since 1970-01-01 UTC.
    virtual double wallClock() const = 0;

    /// Calls `work` once, on the loop, `delay` seconds from now (0: at the next turn, in the order
    /// of scheduling).
    virtual Token schedule(double delay, std::function<void()> work) = 0;
    /// Cancels scheduled work; a token that has fired or is unknown is ignored.
    virtual void cancel(Token token) = 0;

    /// Runs until quit(); returns the status given there.
    virtual int run() = 0;
    virtual void quit(int status) = 0;
};

}
