#include "ads/Utility/GADIdentifierUtilities.h"

#include "ads/Utility/GADDeviceEnvironment.h"
#include "ads/Utility/GADNumberUtilities.h"
#include "platform/foundation/HexDigits.h"
#include "platform/foundation/UTF8Text.h"
#include "platform/host/Crypto.h"
#include "platform/host/Host.h"

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>
#include <tuple>

namespace vistrel {

namespace {

GADDeviceEnvironment& environment() {
    return GADDeviceEnvironment::current();
}

std::unique_ptr<GADIdentifierUtilities>& shared() {
    static std::unique_ptr<GADIdentifierUtilities> instance;
    return instance;
}

std::string digestText(std::string_view text) {
    if (text.empty())
        return {};
    std::string result;
    for (const std::byte byte : host::current().crypto->md5(std::as_bytes(std::span(text))))
        appendHex(result, std::to_integer<unsigned char>(byte), kUpperHexDigits);
    return result;
}

std::string applicationName() {
    std::string name = environment().bundleVersion();
    if (!name.empty())
        name += '.';
    return name + "iphone." + environment().bundleIdentifier();
}

/// Which book shops are installed.
int bookStores() {
    return (environment().canOpenURL("itms-books://") ? 1 : 0) +
           (environment().canOpenURL("kindle://home") ? 2 : 0);
}

void setUnlessEmpty(Value::Dictionary& dictionary, std::string_view key, std::string_view text) {
    if (!text.empty())
        dictionary.set(key, text);
}

}

GADIdentifierUtilities& GADIdentifierUtilities::sharedInstance() {
    if (!shared())
        shared().reset(new GADIdentifierUtilities());
    return *shared();
}

void GADIdentifierUtilities::resetSharedInstance() {
    shared().reset();
}

GADIdentifierUtilities::GADIdentifierUtilities()
    : isPhoneIdiom_(environment().userInterfaceIdiom().value_or(GADInterfaceIdiom::Phone) ==
                    GADInterfaceIdiom::Phone) {}

std::string GADIdentifierUtilities::deviceModel() const {
    return environment().model();
}

const std::string& GADIdentifierUtilities::deviceSubmodel() {
    if (!deviceSubmodel_)
        deviceSubmodel_ = environment().machine();
    return *deviceSubmodel_;
}

std::string GADIdentifierUtilities::osVersion() const {
    return environment().systemVersion();
}

const std::string& GADIdentifierUtilities::deviceIdentifier() {
    if (!deviceIdentifier_)
        deviceIdentifier_ = digestText(environment().uniqueIdentifier());
    return *deviceIdentifier_;
}

const std::string& GADIdentifierUtilities::locale() {
    if (!locale_) {
        const auto languages = environment().languages();
        locale_ = languages.empty() ? std::string() : lowercaseText(languages.front());
    }
    return *locale_;
}

int GADIdentifierUtilities::audioRoute() const {
    const auto route = environment().audioRoute();
    if (!route)
        return 1;
    if (route->empty())
        return 3;
    if (*route == "Headphone" || *route == "Headset")
        return 2;
    return *route == "Speaker" ? 1 : 5;
}

bool GADIdentifierUtilities::isOrientationLandscape() const {
    const auto orientation = environment().statusBarOrientation();
    return orientation == GADInterfaceOrientation::LandscapeRight ||
           orientation == GADInterfaceOrientation::LandscapeLeft;
}

float GADIdentifierUtilities::screenDensity() const {
    return environment().screenScale().value_or(1.0F);
}

GADIdentifierUtilities::ScreenSize GADIdentifierUtilities::screenSize() const {
    const GADScreenFrames frames = environment().screenFrames();
    const float statusBar = frames.isStatusBarHidden ? 0 : frames.statusBarHeight;
    return {frames.applicationWidth, frames.applicationHeight + statusBar};
}

Value::Dictionary GADIdentifierUtilities::canOpenURLs(std::span<const std::string> urls) const {
    Value::Dictionary answers;
    for (const std::string& url : urls)
        answers.set(url, environment().canOpenURL(url));
    return answers;
}

Value::Dictionary GADIdentifierUtilities::parameters() {
    Value::Dictionary parameters;
    const std::string model = deviceModel();
    if (model == "iPad" && isPhoneIdiom_)
        parameters.set("ios_ipadc", "1");
    parameters.set("app_name", applicationName());
    setUnlessEmpty(parameters, "isu", deviceIdentifier());
    setUnlessEmpty(parameters, "platform", model);
    setUnlessEmpty(parameters, "submodel", deviceSubmodel());
    setUnlessEmpty(parameters, "hl", locale());
    parameters.set("u_audio", std::to_string(audioRoute()));
    parameters.set("u_so", isOrientationLandscape() ? "l" : "p");
    parameters.set("u_sd", GADNumberUtilities::stringWithFloat(screenDensity()));
    const ScreenSize size = screenSize();
    parameters.set("u_w", GADNumberUtilities::stringWithFloat(size.width));
    parameters.set("u_h", GADNumberUtilities::stringWithFloat(size.height));
    if (const int stores = bookStores())
        parameters.set("cap_bs", stores);
    return parameters;
}

void GADIdentifierUtilities::getOSMajorMinorBugFix(int* major, int* minor, int* bugFix) {
    const std::string version = environment().systemVersion();
    std::string_view rest = version;
    for (int* component : {major, minor, bugFix}) {
        const auto dot = rest.find('.');
        if (component)
            *component = GADNumberUtilities::integerWithString(rest.substr(0, dot));
        rest = dot == std::string_view::npos ? std::string_view() : rest.substr(dot + 1);
    }
}

bool GADIdentifierUtilities::isOSAtLeastMajorMinorBug(int major, int minor, int bug) {
    int ownMajor = 0;
    int ownMinor = 0;
    int ownBug = 0;
    getOSMajorMinorBugFix(&ownMajor, &ownMinor, &ownBug);
    return std::tie(ownMajor, ownMinor, ownBug) >= std::tie(major, minor, bug);
}

}
