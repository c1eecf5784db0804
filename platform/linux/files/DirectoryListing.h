#pragma once
#include "platform/host/Result.h"

#include <string>
#include <vector>

namespace vistrel {

/// The names in an open folder, without "." and "..", in the order in which the file system returns
/// them.
[[nodiscard]] host::Result<std::vector<std::string>> namesInDirectory(int folder);

}
