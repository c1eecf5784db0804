#pragma once
#include "ads/Network/GADNetworkChecker.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/Utility/GADHostDeviceEnvironment.h"
#include "ads/Utility/GADIdentifierUtilities.h"
#include "ads/Utility/GADSignalGathering.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {

/// The host's device, on which a test can set what the host leaves fixed.
class ScriptedDevice : public GADHostDeviceEnvironment {
public:
    std::optional<std::string> audioRoute() override { return route; }
    std::string bundleVersion() override { return bundleVersionText; }
    std::string bundleIdentifier() override { return "org.vistrel.Vistrel"; }
    std::optional<GADInterfaceIdiom> userInterfaceIdiom() override { return idiom; }
    std::optional<float> screenScale() override { return scale; }
    GADScreenFrames screenFrames() override { return frames; }
    GADInterfaceOrientation statusBarOrientation() override { return orientation; }

    std::optional<std::string> route = "Speaker";
    std::string bundleVersionText = "1.2";
    std::optional<GADInterfaceIdiom> idiom = GADInterfaceIdiom::Phone;
    std::optional<float> scale = 2.0F;
    GADScreenFrames frames;
    GADInterfaceOrientation orientation = GADInterfaceOrientation::Portrait;
};

/// Base of the ad library's tests. Each test gets new shared objects of the library.
class AdsTest : public support::ScreenTest {
protected:
    AdsTest() {
        phoneIdentity() = {"iPhone",
                           "iPhone3,1",
                           "iPhone OS",
                           "4.3.5",
                           "2b6f0cc904d137be2e1730235f5664094b831186",
                           {"en-GB", "de"}};
        GADDeviceEnvironment::install(phone_);
    }
    ~AdsTest() override {
        restartLibrary();
        GADSignalGathering::setShared(nullptr);
        GADDeviceEnvironment::install(nullptr);
    }

    ScriptedDevice& phone() { return *phone_; }
    host::DeviceIdentity& phoneIdentity() { return device().values(); }
    /// Drops the shared objects, as a restart of the application does.
    void restartLibrary() {
        GADStatistics::releaseSharedStatistics();
        GADNetworkChecker::releaseSharedChecker();
        GADIdentifierUtilities::resetSharedInstance();
    }

private:
    std::shared_ptr<ScriptedDevice> phone_ = std::make_shared<ScriptedDevice>();
};

}
