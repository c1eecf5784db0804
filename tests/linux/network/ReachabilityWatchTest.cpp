#include "platform/linux/network/ReachabilityWatch.h"

#include "tests/linux/MainLoop.h"

namespace vistrel {
namespace {

TEST(ReachabilityWatchTest, ReportsTheHostOnceSoonAndAgainAtEachChange) {
    std::vector<host::Reachability> reports;
    const auto watch = [&](const char* hostName) {
        return ReachabilityWatch::start(
            hostName, [&](host::Reachability reachability) { reports.push_back(reachability); });
    };
    auto reachable = watch("127.0.0.1");
    EXPECT_THAT(reports, IsEmpty()) << "never from inside the call";
    ASSERT_TRUE(turnUntil([&] { return reports.size() == 1; }));
    EXPECT_NE(reports[0], host::Reachability::NotReachable);
    g_signal_emit_by_name(g_network_monitor_get_default(), "network-changed", TRUE);
    ASSERT_TRUE(turnUntil([&] { return reports.size() == 2; }));
    reachable.reset();

    // No name server is asked about an address that cannot be one.
    const auto unreachable = watch("no such host");
    ASSERT_TRUE(turnUntil([&] { return reports.size() == 3; }));
    EXPECT_EQ(reports[2], host::Reachability::NotReachable);

    watch("127.0.0.1").reset();
    turnFor(0.1);
    EXPECT_EQ(reports.size(), 3U) << "a watch that is gone reports nothing";
}

}
}
