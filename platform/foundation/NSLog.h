#pragma once
#include <string>

namespace vistrel {

/// Writes one line to the device log.
void NSLog(const std::string& line);

}
