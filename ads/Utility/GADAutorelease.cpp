#include "ads/Utility/GADAutorelease.h"

#include "platform/foundation/NSRunLoop.h"

#include <utility>

namespace vistrel {

void gadAutorelease(std::shared_ptr<const void> object) {
    if (object)
        NSRunLoop::performAfterDelay(
            0, [object = std::move(object)] {});
}

}
