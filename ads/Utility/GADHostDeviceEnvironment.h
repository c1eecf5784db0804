#pragma once
#include "ads/Utility/GADDeviceEnvironment.h"

namespace vistrel {

/// Reports what the host and the bundle know, and a phone's screen held upright. The application
/// overrides the members about the screen.
class GADHostDeviceEnvironment : public GADDeviceEnvironment {
public:
    std::string model() override;
    std::string machine() override;
    std::string systemVersion() override;
    std::string uniqueIdentifier() override;
    /// The user default "AppleLanguages", or the host's languages when it is not set.
    std::vector<std::string> languages() override;
    bool canOpenURL(const std::string& url) override;
    std::optional<std::string> audioRoute() override;
    std::string bundleVersion() override;
    std::string bundleIdentifier() override;
    std::optional<GADInterfaceIdiom> userInterfaceIdiom() override;
    std::optional<float> screenScale() override;
    GADScreenFrames screenFrames() override;
    GADInterfaceOrientation statusBarOrientation() override;
};

}
