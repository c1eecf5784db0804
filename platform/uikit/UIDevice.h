#pragma once
#include <string>

namespace vistrel {

/// Information about the device.
class UIDevice {
public:
    static UIDevice& currentDevice();
    std::string model() const;
    std::string systemName() const;
    std::string systemVersion() const;
    std::string uniqueIdentifier() const;
    /// The hardware model string as the system's kernel or firmware names it.
    std::string hardwareModel() const;
};

}
