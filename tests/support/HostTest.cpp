#include "tests/support/HostTest.h"

#include "platform/foundation/NSUserDefaults.h"
#include "platform/foundation/UserLocale.h"

#include <utility>

namespace vistrel::support {

namespace {
std::vector<std::function<void()>>& resetHooks() {
    static std::vector<std::function<void()>> hooks;
    return hooks;
}
}

bool HostTest::addResetHook(std::function<void()> hook) {
    resetHooks().push_back(std::move(hook));
    return true;
}

HostTest::HostTest() {
    adoptUserLocale();
}

HostTest::~HostTest() {
    for (const auto& hook : resetHooks())
        hook();
    NSUserDefaults::resetStandardUserDefaults();
    host_.loop.clear();
    EXPECT_EQ(host_.network.runningTransfers(), 0) << "a transfer was left running";
    EXPECT_EQ(host_.files.openStreams(), 0) << "a file was left open";
    EXPECT_TRUE(host_.webEngine.pages().empty()) << "a web page was left alive";
    EXPECT_TRUE(host_.media.players().empty()) << "a player was left alive";
}

}
