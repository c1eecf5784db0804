#pragma once
#include "platform/foundation/NSRunLoop.h"

namespace vistrel {

/// Seconds since 2001-01-01 UTC, the origin of the phone's absolute time.
inline double gadAbsoluteTime() {
    constexpr double secondsFrom1970To2001 = 978307200;
    return NSRunLoop::wallClock() - secondsFrom1970To2001;
}

}
