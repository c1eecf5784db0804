#include "tests/support/ManualDisplay.h"

#include "platform/host/EventLoop.h"

#include <cmath>
#include <utility>

namespace vistrel::support {

namespace {
constexpr double kFramesPerSecond = 60;
}

void ManualDisplay::requestFrame() {
    if (std::exchange(asked_, true))
        return;
    const double now = loop_.now();
    const double next = (std::floor(now * kFramesPerSecond + 1e-6) + 1) / kFramesPerSecond;
    loop_.schedule(next - now, [this] {
        asked_ = false;
        ++frames_;
        if (handler_) {
            const auto handler = handler_;
            handler(loop_.now());
        }
    });
}

}
