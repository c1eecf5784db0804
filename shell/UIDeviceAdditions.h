#pragma once
#include <string>

namespace vistrel {
class UIDevice;

/// The hardware model string, as support mails name it.
std::string machine(const UIDevice& device);

}
