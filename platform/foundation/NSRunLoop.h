#pragma once
#include <cstdint>
#include <functional>

namespace vistrel {

/// The main run loop: delayed calls and the clocks.
namespace NSRunLoop {

using Token = std::uint64_t;

/// Calls `work` once, `delay` seconds from now (0: at the next turn). Returns a token for cancel;
/// 0, and the work is dropped, when the host is gone.
Token performAfterDelay(double delay, std::function<void()> work);
void cancelPerform(Token token);

/// Monotonic seconds.
double now();
/// Seconds since 1970-01-01 UTC.
double wallClock();

}
}
