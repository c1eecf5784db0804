#include "platform/uikit/UIDevice.h"

#include "platform/host/Desktop.h"
#include "platform/host/Host.h"

namespace vistrel {

namespace {
const host::DeviceIdentity& identity() {
    return host::current().device->identity();
}
}

UIDevice& UIDevice::currentDevice() {
    static UIDevice device;
    return device;
}

std::string UIDevice::model() const {
    return identity().model;
}

std::string UIDevice::systemName() const {
    return identity().systemName;
}

std::string UIDevice::systemVersion() const {
    return identity().systemVersion;
}

std::string UIDevice::uniqueIdentifier() const {
    return identity().uniqueIdentifier;
}

std::string UIDevice::hardwareModel() const {
    return identity().machine;
}

}
