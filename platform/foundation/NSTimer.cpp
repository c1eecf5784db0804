#include "platform/foundation/NSTimer.h"

#include "platform/foundation/NSRunLoop.h"

#include <cmath>
#include <utility>

namespace vistrel {

namespace {
/// The phone's interval in place of zero or less.
constexpr double kShortestInterval = 0.0001;
}

struct NSTimer::State : std::enable_shared_from_this<NSTimer::State> {
    double interval = 0;
    bool repeats = false;
    bool valid = true;
    double due = 0;
    NSRunLoop::Token token = 0;
    std::function<void()> action;

    void schedule() {
        token = NSRunLoop::performAfterDelay(
            due - NSRunLoop::now(), [self = shared_from_this()] { self->fire(); });
    }

    void fire() {
        token = 0;
        // The action may invalidate the timer, which drops the stored one.
        const std::function<void()> running = action;
        running();
        if (!valid)
            return;
        if (!repeats) {
            end();
            return;
        }
        const double late = NSRunLoop::now() - due;
        due += interval * (late > 0 ? std::floor(late / interval) + 1 : 1);
        schedule();
    }

    void end() {
        valid = false;
        NSRunLoop::cancelPerform(std::exchange(token, 0));
        action = nullptr;
    }
};

NSTimer::NSTimer(std::shared_ptr<State> state)
    : state_(std::move(state)) {}

NSTimer::~NSTimer() = default;

std::shared_ptr<NSTimer> NSTimer::scheduledTimer(double interval, Repeats repeats,
                                                 std::function<void()> action) {
    auto state = std::make_shared<State>();
    state->interval = interval > kShortestInterval ? interval : kShortestInterval;
    state->repeats = repeats == Repeats::Yes;
    state->due = NSRunLoop::now() + state->interval;
    state->action = std::move(action);
    state->schedule();
    return std::shared_ptr<NSTimer>(new NSTimer(std::move(state)));
}

void NSTimer::invalidate() {
    state_->end();
}

bool NSTimer::isValid() const {
    return state_->valid;
}

double NSTimer::timeInterval() const {
    return state_->repeats ? state_->interval : 0;
}

}
