#pragma once
#include "platform/host/EventLoop.h"

#include <cstddef>
#include <limits>
#include <map>
#include <optional>
#include <utility>

namespace vistrel::support {

/// A run loop whose clock stands still until a test moves it. Work that is due runs in the order of
/// its times, then of scheduling.
class VirtualLoop : public host::EventLoop {
public:
    double now() const override { return now_; }
    double wallClock() const override { return wallClockAtStart_ + now_; }
    Token schedule(double delay, std::function<void()> work) override;
    void cancel(Token token) override;
    /// Runs all work, moving the clock, until quit() or until nothing is left to do (status -1).
    int run() override {
        status_.reset();
        runUntil([this] { return status_.has_value(); }, kForever);
        return status_.value_or(-1);
    }
    void quit(int status) override { status_ = status; }

    /// Moves the clock and runs what comes due, including what that work schedules within the time.
    void advance(double seconds);
    /// Runs what is due now.
    void turn() { advance(0); }
    /// Runs work, moving the clock as needed, until the condition holds; false when the time is up
    /// or nothing is left to do first.
    bool runUntil(const std::function<bool()>& condition, double atMost = 3600);

    std::size_t pendingWork() const { return queue_.size(); }
    /// Forgets all work.
    void clear();
    void setWallClockAtStart(double seconds) { wallClockAtStart_ = seconds; }

private:
    using Moment = std::pair<double, Token>;
    static constexpr double kForever = std::numeric_limits<double>::infinity();

    bool runNext(double until);

    double now_ = 1000;
    double wallClockAtStart_ = 1'300'000'000;
    Token lastToken_ = 0;
    std::map<Moment, std::function<void()>> queue_;
    std::map<Token, Moment> moments_;
    std::optional<int> status_;
};

}
