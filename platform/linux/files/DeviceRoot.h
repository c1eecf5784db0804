#pragma once
#include "platform/host/Result.h"

#include <string>

namespace vistrel {

/// $XDG_DATA_HOME/vistrel/device, or the same under ~/.local/share.
[[nodiscard]] std::string defaultDeviceRoot();

/// Makes the folder and in it the folders that a phone ships with. Existing ones stay unchanged.
/// The downloads folder is not among them: the application makes it.
[[nodiscard]] host::Status prepareDeviceRoot(const std::string& root);

}
