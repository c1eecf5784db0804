#pragma once
#include "platform/foundation/NSURL.h"

#include <functional>
#include <optional>

namespace vistrel {

/// Follows the redirects of `url` with a GET that ends at the response's headers, each hop with the
/// cookies and credentials it may get. `found` is called on the main run loop with the address that
/// answered, or with nothing when none did.
void findFinalAddress(const NSURL& url, std::function<void(const std::optional<NSURL>&)> found);

}
