#pragma once
#include "platform/host/EventLoop.h"
#include "tests/support/Testing.h"

#include <cstddef>

namespace vistrel::support {

/// A run loop whose clock stands still until a test moves it. Work that is due runs in the order of
/// its times, then of scheduling.
class VirtualLoop : public host::EventLoop {
public:
    double now() const override { return now_; }
    double wallClock() const override { return wallClockAtStart_ + now_; }
    Token schedule(double delay, std::function<void()> work) override {
        const Token token = ++lastToken_;
        queue_.emplace(Moment(now_ + std::max(delay, 0.0), token), std::move(work));
        return token;
    }
    void cancel(Token token) override {
        const auto found =
            std::ranges::find(queue_, token, [](const auto& entry) { return entry.first.second; });
        if (found == queue_.end())
            return;
        // The work is destroyed last: what it holds may cancel in turn.
        const auto node = queue_.extract(found);
    }
    /// Tests turn the loop themselves.
    int run() override { return -1; }
    void quit(int /*status*/) override {}

    /// Moves the clock and runs what comes due, including what that work schedules within the time.
    void advance(double seconds) {
        const double target = now_ + seconds;
        std::size_t done = 0;
        while (runNext(target)) {
            if (++done == kMostWork) {
                ADD_FAILURE() << "the loop's work never ends";
                return;
            }
        }
        // Work may have moved the clock further by itself.
        now_ = std::max(now_, target);
    }
    /// Runs what is due now.
    void turn() { advance(0); }
    /// Runs work, moving the clock as needed, until the condition holds; false when the time is up
    /// or nothing is left to do first.
    bool runUntil(const std::function<bool()>& condition, double atMost = 3600) {
        const double limit = now_ + atMost;
        std::size_t done = 0;
        while (!condition()) {
            if (++done == kMostWork || !runNext(limit))
                return condition();
        }
        return true;
    }

    std::size_t pendingWork() const { return queue_.size(); }
    /// Forgets all work.
    void clear() { const auto work = std::exchange(queue_, {}); }
    void setWallClockAtStart(double seconds) { wallClockAtStart_ = seconds; }

private:
    using Moment = std::pair<double, Token>;
    /// More work than this in one step is a loop that feeds itself.
    static constexpr std::size_t kMostWork = 5'000'000;

    bool runNext(double until) {
        if (queue_.empty() || queue_.begin()->first.first > until)
            return false;
        auto node = queue_.extract(queue_.begin());
        now_ = std::max(now_, node.key().first);
        node.mapped()();
        return true;
    }

    double now_ = 1000;
    double wallClockAtStart_ = 1'300'000'000;
    Token lastToken_ = 0;
    std::map<Moment, std::function<void()>> queue_;
};

}
