#include "ads/Network/GADNetworkChecker.h"

#include "ads/GADSettings.h"
#include "tests/ads/AdsTest.h"

namespace vistrel {
namespace {

using NetworkCheckerTest = AdsTest;

TEST_F(NetworkCheckerTest, ReportsTheKindOfNetworkWhileEnabled) {
    GADNetworkChecker& checker = GADNetworkChecker::sharedChecker();
    EXPECT_TRUE(checker.isEnabled());
    EXPECT_EQ(network().watchedHost(), gadSettingValue(kGADReachabilityHost));
    EXPECT_EQ(checker.networkType(), GADNetworkType::Unknown);
    EXPECT_EQ(checker.networkTypeString(), std::nullopt);
    turn();
    EXPECT_EQ(checker.networkTypeString(), "wi");
    network().setReachability(host::Reachability::Cellular);
    turn();
    EXPECT_EQ(checker.networkTypeString(), "ed");
    network().setReachability(host::Reachability::NotReachable);
    turn();
    EXPECT_EQ(checker.networkType(), GADNetworkType::NotReachable);
    EXPECT_EQ(checker.networkTypeString(), std::nullopt);
    EXPECT_EQ(checker.changeCount(), 3);
    checker.setEnabled(false);
    EXPECT_EQ(network().watchedHost(), "");
    network().setReachability(host::Reachability::Cellular);
    turn();
    EXPECT_EQ(checker.networkTypeString(), std::nullopt);
    EXPECT_EQ(checker.changeCount(), 3);
    checker.setEnabled(true);
    turn();
    EXPECT_EQ(checker.networkTypeString(), "ed");
}

}
}
