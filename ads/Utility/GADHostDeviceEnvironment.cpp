#include "ads/Utility/GADHostDeviceEnvironment.h"

#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/host/Desktop.h"
#include "platform/host/Display.h"
#include "platform/host/Host.h"
#include "platform/host/Media.h"

#include <string_view>

namespace vistrel {

namespace {
const host::DeviceIdentity& identity() {
    return host::current().device->identity();
}

std::string bundleText(std::string_view key) {
    const Value* value = NSBundle::mainBundle().infoDictionary().find(key);
    return value ? std::string(value->string()) : std::string();
}
}

std::string GADHostDeviceEnvironment::model() {
    return identity().model;
}

std::string GADHostDeviceEnvironment::machine() {
    return identity().machine;
}

std::string GADHostDeviceEnvironment::systemVersion() {
    return identity().systemVersion;
}

std::string GADHostDeviceEnvironment::uniqueIdentifier() {
    return identity().uniqueIdentifier;
}

std::vector<std::string> GADHostDeviceEnvironment::languages() {
    const Value stored = NSUserDefaults::standardUserDefaults().objectForKey("AppleLanguages");
    if (stored.array().empty())
        return identity().languages;
    std::vector<std::string> languages;
    for (const Value& language : stored.array())
        languages.emplace_back(language.string());
    return languages;
}

bool GADHostDeviceEnvironment::canOpenURL(const std::string& url) {
    return host::current().desktop->canOpenURL(url);
}

std::optional<std::string> GADHostDeviceEnvironment::audioRoute() {
    auto route = host::current().media->audioRoute();
    if (!route)
        return std::nullopt;
    return route.value();
}

std::string GADHostDeviceEnvironment::bundleVersion() {
    return bundleText("CFBundleVersion");
}

std::string GADHostDeviceEnvironment::bundleIdentifier() {
    return bundleText("CFBundleIdentifier");
}

std::optional<GADInterfaceIdiom> GADHostDeviceEnvironment::userInterfaceIdiom() {
    return GADInterfaceIdiom::Phone;
}

std::optional<float> GADHostDeviceEnvironment::screenScale() {
    return static_cast<float>(host::current().display->scale());
}

GADScreenFrames GADHostDeviceEnvironment::screenFrames() {
    return {};
}

GADInterfaceOrientation GADHostDeviceEnvironment::statusBarOrientation() {
    return GADInterfaceOrientation::Portrait;
}

}
