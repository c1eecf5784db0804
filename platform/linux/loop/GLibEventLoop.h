#pragma once
#include "platform/host/EventLoop.h"

#include <glib.h>

#include <cstdint>
#include <map>
#include <utility>

namespace vistrel {

/// The default main context as the application's loop. All scheduled work shares one source, which
/// wakes the process only when something is due.
class GLibEventLoop : public host::EventLoop {
public:
    GLibEventLoop();
    ~GLibEventLoop() override;
    GLibEventLoop(const GLibEventLoop&) = delete;
    GLibEventLoop& operator=(const GLibEventLoop&) = delete;

    double now() const override;
    double wallClock() const override;
    Token schedule(double delay, std::function<void()> work) override;
    void cancel(Token token) override;
    int run() override;
    void quit(int status) override;

    /// Runs what is due now. Work that this schedules without delay waits for the next turn, so
    /// that input and frames can come in between.
    void runDueWork();

private:
    using Moment = std::pair<std::int64_t, Token>; ///< microseconds

    void updateReadyTime();

    std::map<Moment, std::function<void()>> queue_;
    std::map<Token, Moment> moments_;
    Token lastToken_ = 0;
    GSource* source_ = nullptr;
    GMainLoop* loop_ = nullptr;
    int status_ = 0;
};

}
