#pragma once
#include "platform/host/Result.h"

#include <string>

namespace vistrel {

/// Moves what has the name in one open folder to a name in another. Never replaces anything; across
/// file systems the whole is copied and put on the disk before the original goes.
[[nodiscard]] host::Status moveTree(int fromFolder, const std::string& from, int toFolder,
                                    const std::string& to);

}
