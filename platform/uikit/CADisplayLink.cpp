#include "platform/uikit/CADisplayLink.h"

#include "platform/host/Display.h"
#include "platform/host/Host.h"

#include <algorithm>
#include <vector>

namespace vistrel {

namespace {

// In the order of starting; a stopped link leaves a null while the list is being walked.
std::vector<CADisplayLink*>& links() {
    static std::vector<CADisplayLink*> running;
    return running;
}
int firing = 0;

}

CADisplayLink::CADisplayLink(std::function<void(double now)> action)
    : action_(std::move(action)) {}

CADisplayLink::~CADisplayLink() {
    stop();
}

void CADisplayLink::start() {
    if (running_)
        return;
    running_ = true;
    links().push_back(this);
    if (host::Display* display = host::current().display) {
        display->setFrameHandler(&CADisplayLink::fire);
        display->requestFrame();
    }
}

void CADisplayLink::stop() {
    if (!running_)
        return;
    running_ = false;
    auto found = std::find(links().begin(), links().end(), this);
    if (firing > 0)
        *found = nullptr;
    else
        links().erase(found);
}

void CADisplayLink::fire(double now) {
    ++firing;
    const std::size_t count = links().size();
    for (std::size_t i = 0; i < count; ++i) {
        if (CADisplayLink* link = links()[i]) {
            const auto action = link->action_;
            action(now);
        }
    }
    if (--firing > 0)
        return;
    std::erase(links(), nullptr);
    if (!links().empty() && host::current().display)
        host::current().display->requestFrame();
}

}
