#pragma once
#include "platform/host/Result.h"

#include <string>

namespace vistrel {

/// Removes what has the name in an open folder: a file, a link (not what it leads to), or a folder
/// with all that is in it.
[[nodiscard]] host::Status removeTree(int folder, const std::string& name);

}
