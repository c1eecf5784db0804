#include "tests/ads/AdsTest.h"

#include "ads/Network/GADNetworkChecker.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/Utility/GADIdentifierUtilities.h"
#include "ads/Utility/GADSignalGathering.h"

namespace vistrel {

AdsTest::AdsTest() {
    GADDeviceEnvironment::install(phone_);
}

AdsTest::~AdsTest() {
    restartLibrary();
    GADSignalGathering::setShared(nullptr);
    GADDeviceEnvironment::install(nullptr);
}

void AdsTest::restartLibrary() {
    GADStatistics::releaseSharedStatistics();
    GADNetworkChecker::releaseSharedChecker();
    GADIdentifierUtilities::resetSharedInstance();
}

}
