#pragma once
#include "ads/Network/GADNetworkChecker.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/Utility/GADIdentifierUtilities.h"
#include "ads/Utility/GADSignalGathering.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {

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
        deterministicHost().host.resourcePath = SOURCE_FOLDER "/resources";
        preferences().setPropertyList(
            SOURCE_FOLDER "/resources/Info.plist",
            Value::Dictionary{{"CFBundleVersion", "1.2"},
                              {"CFBundleIdentifier", "org.vistrel.Vistrel"}});
    }
    ~AdsTest() override {
        restartLibrary();
        GADSignalGathering::setShared(nullptr);
    }

    host::DeviceIdentity& phoneIdentity() { return device().values(); }
    /// Drops the shared objects, as a restart of the application does.
    void restartLibrary() {
        GADStatistics::releaseSharedStatistics();
        GADNetworkChecker::releaseSharedChecker();
        GADIdentifierUtilities::resetSharedInstance();
    }
};

}
