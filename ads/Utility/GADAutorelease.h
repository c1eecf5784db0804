#pragma once
#include <memory>

namespace vistrel {

/// Keeps the object alive until the next pass of the run loop, so its last owner may release it in
/// the middle of a callback.
void gadAutorelease(std::shared_ptr<const void> object);

}
