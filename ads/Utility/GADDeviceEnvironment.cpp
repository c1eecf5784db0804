#include "ads/Utility/GADDeviceEnvironment.h"

#include "ads/Utility/GADHostDeviceEnvironment.h"

#include <utility>

namespace vistrel {

namespace {
std::shared_ptr<GADDeviceEnvironment>& installed() {
    static std::shared_ptr<GADDeviceEnvironment> environment;
    return environment;
}
}

GADDeviceEnvironment& GADDeviceEnvironment::current() {
    if (!installed())
        installed() = std::make_shared<GADHostDeviceEnvironment>();
    return *installed();
}

void GADDeviceEnvironment::install(std::shared_ptr<GADDeviceEnvironment> environment) {
    installed() = std::move(environment);
}

}
