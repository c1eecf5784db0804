#include "platform/linux/loop/GLibEventLoop.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

constexpr double kMicroseconds = 1e6;
/// A year is as good as never.
constexpr double kLongestDelay = 365.0 * 86400;

struct WorkSource {
    GSource base;
    GLibEventLoop* loop;
};

gboolean dispatchWork(GSource* source, GSourceFunc, gpointer) {
    reinterpret_cast<WorkSource*>(source)->loop->runDueWork();
    return G_SOURCE_CONTINUE;
}

GSourceFuncs* sourceFunctions() {
    static GSourceFuncs functions{nullptr, nullptr, dispatchWork, nullptr, nullptr, nullptr};
    return &functions;
}

}

GLibEventLoop::GLibEventLoop()
    : source_(g_source_new(sourceFunctions(), sizeof(WorkSource)))
    , loop_(g_main_loop_new(nullptr, FALSE)) {
    reinterpret_cast<WorkSource*>(source_)->loop = this;
    g_source_set_static_name(source_, "vistrel work");
    g_source_attach(source_, nullptr);
}

GLibEventLoop::~GLibEventLoop() {
    g_source_destroy(source_);
    g_source_unref(source_);
    g_main_loop_unref(loop_);
}

double GLibEventLoop::now() const {
    return static_cast<double>(g_get_monotonic_time()) / kMicroseconds;
}

double GLibEventLoop::wallClock() const {
    return static_cast<double>(g_get_real_time()) / kMicroseconds;
}

GLibEventLoop::Token GLibEventLoop::schedule(double delay, std::function<void()> work) {
    const double seconds = std::clamp(delay, 0.0, kLongestDelay);
    const Token token = ++lastToken_;
    const Moment moment(g_get_monotonic_time() +
                            static_cast<std::int64_t>(std::ceil(seconds * kMicroseconds)),
                        token);
    const bool first = queue_.empty() || moment < queue_.begin()->first;
    queue_.emplace(moment, std::move(work));
    moments_.emplace(token, moment);
    if (first)
        updateReadyTime();
    return token;
}

void GLibEventLoop::cancel(Token token) {
    const auto found = moments_.find(token);
    if (found == moments_.end())
        return;
    // The work is destroyed last: its captures may cancel other work.
    const auto work = queue_.extract(found->second);
    moments_.erase(found);
    updateReadyTime();
}

void GLibEventLoop::updateReadyTime() {
    g_source_set_ready_time(source_, queue_.empty() ? -1 : queue_.begin()->first.first);
}

void GLibEventLoop::runDueWork() {
    const std::int64_t time = g_get_monotonic_time();
    const Token lastOfThisTurn = lastToken_;
    while (!queue_.empty() && queue_.begin()->first.first <= time &&
           queue_.begin()->first.second <= lastOfThisTurn) {
        auto work = queue_.extract(queue_.begin());
        moments_.erase(work.key().second);
        work.mapped()();
    }
    updateReadyTime();
}

int GLibEventLoop::run() {
    g_main_loop_run(loop_);
    return status_;
}

void GLibEventLoop::quit(int status) {
    status_ = status;
    g_main_loop_quit(loop_);
}

}
