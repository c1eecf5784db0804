#include "ads/Network/GADNetworkChecker.h"

#include "ads/GADSettings.h"
#include "tests/ads/AdsTest.h"

#include <gtest/gtest.h>

namespace vistrel {
namespace {

using NetworkCheckerTest = AdsTest;

TEST_F(NetworkCheckerTest, NamesTheNetworkOnceItIsReported) {
    GADNetworkChecker& checker = GADNetworkChecker::sharedChecker();
    EXPECT_TRUE(checker.isEnabled());
    EXPECT_EQ(network().watchedHost(), gadSettingValue(kGADReachabilityHost));
    EXPECT_EQ(checker.networkType(), GADNetworkType::Unknown);
    EXPECT_EQ(checker.networkTypeString(), std::nullopt);
    turn();
    EXPECT_EQ(checker.networkTypeString(), "wi");
    EXPECT_EQ(checker.changeCount(), 1);
    network().setReachability(host::Reachability::Cellular);
    turn();
    EXPECT_EQ(checker.networkTypeString(), "ed");
    network().setReachability(host::Reachability::NotReachable);
    turn();
    EXPECT_EQ(checker.networkType(), GADNetworkType::NotReachable);
    EXPECT_EQ(checker.networkTypeString(), std::nullopt);
    EXPECT_EQ(checker.changeCount(), 3);
}

TEST_F(NetworkCheckerTest, HearsNothingWhileDisabled) {
    GADNetworkChecker& checker = GADNetworkChecker::sharedChecker();
    checker.setEnabled(false);
    EXPECT_EQ(network().watchedHost(), "");
    network().setReachability(host::Reachability::Cellular);
    turn();
    EXPECT_EQ(checker.networkType(), GADNetworkType::Unknown);
    EXPECT_EQ(checker.changeCount(), 0);
    checker.setEnabled(true);
    turn();
    EXPECT_EQ(checker.networkTypeString(), "ed");
}

}
}
