#include "ads/Utility/GADIdentifierUtilities.h"

#include "ads/Utility/GADNumberUtilities.h"
#include "ads/Utility/GADTextUtilities.h"
#include "platform/foundation/HexDigits.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSURL.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/foundation/UTF8Text.h"
#include "platform/host/Crypto.h"
#include "platform/host/Desktop.h"
#include "platform/host/Host.h"
#include "platform/host/Media.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIDevice.h"
#include "platform/uikit/UIScreen.h"

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>
#include <tuple>

namespace vistrel {

namespace {

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
    const auto& bundle = NSBundle::mainBundle().infoDictionary().dictionary();
    std::string name = gadTextForKey("CFBundleVersion", bundle);
    if (!name.empty())
        name += '.';
    return name + "iphone." + gadTextForKey("CFBundleIdentifier", bundle);
}

/// The user's choice, else the system's.
std::string firstLanguage() {
    const Value chosen = NSUserDefaults::standardUserDefaults().objectForKey("AppleLanguages");
    if (!chosen.array().empty())
        return std::string(chosen.array().front().string());
    const auto& languages = host::current().device->identity().languages;
    return languages.empty() ? std::string() : languages.front();
}

bool canOpenURL(const std::string& url) {
    return host::current().desktop->canOpenURL(url);
}

/// Which book shops are installed.
int bookStores() {
    return (canOpenURL("itms-books://") ? 1 : 0) + (canOpenURL("kindle://home") ? 2 : 0);
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

std::string GADIdentifierUtilities::deviceModel() const {
    return UIDevice::currentDevice().model();
}

const std::string& GADIdentifierUtilities::deviceSubmodel() {
    if (!deviceSubmodel_)
        deviceSubmodel_ = UIDevice::currentDevice().hardwareModel();
    return *deviceSubmodel_;
}

std::string GADIdentifierUtilities::osVersion() const {
    return UIDevice::currentDevice().systemVersion();
}

const std::string& GADIdentifierUtilities::deviceIdentifier() {
    if (!deviceIdentifier_)
        deviceIdentifier_ = digestText(UIDevice::currentDevice().uniqueIdentifier());
    return *deviceIdentifier_;
}

const std::string& GADIdentifierUtilities::locale() {
    if (!locale_)
        locale_ = lowercaseText(firstLanguage());
    return *locale_;
}

int GADIdentifierUtilities::audioRoute() const {
    const auto found = host::current().media->audioRoute();
    if (!found)
        return 1;
    const std::string& route = found.value();
    if (route.empty())
        return 3;
    if (route == "Headphone" || route == "Headset")
        return 2;
    return route == "Speaker" ? 1 : 5;
}

bool GADIdentifierUtilities::isOrientationLandscape() const {
    return UIInterfaceOrientationIsLandscape(
        UIApplication::sharedApplication().statusBarOrientation());
}

float GADIdentifierUtilities::screenDensity() const {
    return static_cast<float>(UIScreen::mainScreen().scale());
}

CGSize GADIdentifierUtilities::screenSize() const {
    return UIScreen::mainScreen().bounds().size;
}

Value::Dictionary GADIdentifierUtilities::canOpenURLs(std::span<const std::string> urls) const {
    Value::Dictionary answers;
    for (const std::string& url : urls)
        answers.set(url, canOpenURL(url));
    return answers;
}

Value::Dictionary GADIdentifierUtilities::parameters() {
    Value::Dictionary parameters;
    const std::string model = deviceModel();
    if (model == "iPad" && isPhoneIdiom())
        parameters.set("ios_ipadc", "1");
    parameters.set("app_name", applicationName());
    setUnlessEmpty(parameters, "isu", deviceIdentifier());
    setUnlessEmpty(parameters, "platform", model);
    setUnlessEmpty(parameters, "submodel", deviceSubmodel());
    setUnlessEmpty(parameters, "hl", locale());
    parameters.set("u_audio", std::to_string(audioRoute()));
    parameters.set("u_so", isOrientationLandscape() ? "l" : "p");
    parameters.set("u_sd", GADNumberUtilities::stringWithFloat(screenDensity()));
    const CGSize size = screenSize();
    parameters.set("u_w", GADNumberUtilities::stringWithFloat(static_cast<float>(size.width)));
    parameters.set("u_h", GADNumberUtilities::stringWithFloat(static_cast<float>(size.height)));
    if (const int stores = bookStores())
        parameters.set("cap_bs", stores);
    return parameters;
}

void GADIdentifierUtilities::getOSMajorMinorBugFix(int* major, int* minor, int* bugFix) {
    const std::string version = UIDevice::currentDevice().systemVersion();
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
