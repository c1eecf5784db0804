#include "shell/UIDeviceAdditions.h"

#include "platform/uikit/UIDevice.h"

namespace vistrel {

std::string machine(const UIDevice& device) {
    return device.hardwareModel();
}

}
