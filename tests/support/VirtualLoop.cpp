#include "tests/support/VirtualLoop.h"

#include <gtest/gtest.h>

namespace vistrel::support {

namespace {
/// More work than this in one step is a loop that feeds itself.
constexpr std::size_t kMostWork = 5'000'000;
}

VirtualLoop::Token VirtualLoop::schedule(double delay, std::function<void()> work) {
    const Token token = ++lastToken_;
    const Moment moment(now_ + (delay > 0 ? delay : 0), token);
    queue_.emplace(moment, std::move(work));
    moments_.emplace(token, moment);
    return token;
}

void VirtualLoop::cancel(Token token) {
    const auto found = moments_.find(token);
    if (found == moments_.end())
        return;
    // The work is destroyed last: what it holds may cancel in turn.
    const auto node = queue_.extract(found->second);
    moments_.erase(found);
}

bool VirtualLoop::runNext(double until) {
    if (queue_.empty() || queue_.begin()->first.first > until)
        return false;
    auto node = queue_.extract(queue_.begin());
    moments_.erase(node.key().second);
    if (node.key().first > now_)
        now_ = node.key().first;
    node.mapped()();
    return true;
}

void VirtualLoop::advance(double seconds) {
    const double target = now_ + seconds;
    std::size_t done = 0;
    while (runNext(target)) {
        if (++done == kMostWork) {
            ADD_FAILURE() << "the loop's work never ends";
            return;
        }
    }
    // Work may have moved the clock further by itself.
    if (target > now_)
        now_ = target;
}

bool VirtualLoop::runUntil(const std::function<bool()>& condition, double atMost) {
    const double limit = now_ + atMost;
    std::size_t done = 0;
    while (!condition()) {
        if (++done == kMostWork || !runNext(limit))
            return condition();
    }
    return true;
}

void VirtualLoop::clear() {
    moments_.clear();
    const auto work = std::exchange(queue_, {});
}

}
