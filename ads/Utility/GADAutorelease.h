#pragma once
#include <memory>

namespace vistrel {

/// Keeps the object alive until the next pass of the run loop, so that its last owner may let go
/// of it in the middle of a callback.
void gadAutorelease(std::shared_ptr<const void> object);

}
