#pragma once
#include <stop_token>
#include <string>

namespace vistrel {

/// Removes the unfinished files that killed processes have left below a folder of the machine,
/// until it is told to stop. The caller is the only process that writes there; what it has in the
/// making itself stays.
void removeStrayFiles(const std::string& root, const std::stop_token& stop = {});

}
