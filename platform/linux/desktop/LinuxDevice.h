#pragma once
#include "platform/host/Desktop.h"

#include <string>
#include <vector>

namespace vistrel {

/// Where the machine's description is read from; tests use other files.
struct MachineFiles {
    std::string machineID = "/etc/machine-id";
    std::string osRelease = "/etc/os-release";
    std::string deviceTreeModel = "/proc/device-tree/model";
    std::string productName = "/sys/devices/virtual/dmi/id/product_name";
    std::string chassisType = "/sys/devices/virtual/dmi/id/chassis_type";
};

/// The machine's description, read once on first use.
class LinuxDevice : public host::Device {
public:
    explicit LinuxDevice(MachineFiles files = {});
    const host::DeviceIdentity& identity() override;

private:
    void read();

    MachineFiles files_;
    host::DeviceIdentity identity_;
    bool read_ = false;
};

/// Language codes in the order of the locale's names: "de_AT.UTF-8:en" gives "de",
/// "en". Never empty.
[[nodiscard]] std::vector<std::string> languagesFrom(const std::vector<std::string>& localeNames);

}
