#include "platform/foundation/NSRunLoop.h"

#include "platform/host/EventLoop.h"
#include "platform/host/Host.h"

#include <utility>

namespace vistrel::NSRunLoop {

Token performAfterDelay(double delay, std::function<void()> work) {
    if (!host::isInstalled())
        return 0; // an object that outlived the loop is being destroyed
    return host::current().loop->schedule(delay > 0 ? delay : 0, std::move(work));
}

void cancelPerform(Token token) {
    if (token != 0 && host::isInstalled())
        host::current().loop->cancel(token);
}

double now() {
    return host::current().loop->now();
}

double wallClock() {
    return host::current().loop->wallClock();
}

}
