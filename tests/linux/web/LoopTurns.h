#pragma once
#include <glib.h>

#include <algorithm>
#include <ctime>

namespace vistrel {

/// Measures the turns of the main loop while it lives: how much work is done from one wait for
/// events to the next, in seconds of this thread, so that a busy machine does not count.
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
    static double now() {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
    }
    static LoopTurns*& current() {
        static LoopTurns* turns = nullptr;
        return turns;
    }
    static gint timedPoll(GPollFD* descriptors, guint count, gint timeout) {
        LoopTurns& self = *current();
        if (self.turning_)
            self.longest_ = std::max(self.longest_, now() - self.began_);
        const gint result = self.poll_(descriptors, count, timeout);
        self.turning_ = true;
        self.began_ = now();
        return result;
    }

    GPollFunc poll_ = nullptr;
    double began_ = 0;
    bool turning_ = false;
    double longest_ = 0;
};

}
