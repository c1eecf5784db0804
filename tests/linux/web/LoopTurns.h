#pragma once
#include <glib.h>

#include <algorithm>
#include <chrono>

namespace vistrel {

/// Measures the turns of the main loop while it lives: how long it takes from one wait for events
/// to the next.
class LoopTurns {
public:
    LoopTurns() {
        current() = this;
        poll_ = g_main_context_get_poll_func(nullptr);
        g_main_context_set_poll_func(nullptr, timedPoll);
    }
    ~LoopTurns() {
        g_main_context_set_poll_func(nullptr, poll_);
        current() = nullptr;
    }
    LoopTurns(const LoopTurns&) = delete;
    LoopTurns& operator=(const LoopTurns&) = delete;

    double longestSeconds() const { return longest_; }

private:
    using Clock = std::chrono::steady_clock;
    static LoopTurns*& current() {
        static LoopTurns* turns = nullptr;
        return turns;
    }
    static gint timedPoll(GPollFD* descriptors, guint count, gint timeout) {
        LoopTurns& self = *current();
        if (self.turning_)
            self.longest_ = std::max(
                self.longest_, std::chrono::duration<double>(Clock::now() - self.began_).count());
        const gint result = self.poll_(descriptors, count, timeout);
        self.turning_ = true;
        self.began_ = Clock::now();
        return result;
    }

    GPollFunc poll_ = nullptr;
    Clock::time_point began_;
    bool turning_ = false;
    double longest_ = 0;
};

}
