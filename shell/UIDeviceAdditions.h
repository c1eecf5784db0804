#pragma once
#include <string>

namespace vistrel {
class UIDevice;

/// The hardware model string for support mails.
std::string machine(const UIDevice& device);

}
