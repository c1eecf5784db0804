#include "tests/support/HostTest.h"

#include "platform/foundation/NSUserDefaults.h"
#include "platform/foundation/UserLocale.h"

namespace vistrel::support {

HostTest::HostTest() {
    (void)adoptUserLocale();
}

HostTest::~HostTest() {
    NSUserDefaults::resetStandardUserDefaults();
    host_.loop.clear();
    EXPECT_EQ(host_.network.runningTransfers(), 0) << "a transfer was left running";
    EXPECT_EQ(host_.files.openStreams(), 0) << "a file was left open";
    EXPECT_TRUE(host_.webEngine.pages().empty()) << "a web page was left alive";
    EXPECT_TRUE(host_.media.players().empty()) << "a player was left alive";
}

}
