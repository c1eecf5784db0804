#pragma once
#include "platform/foundation/NSUserDefaults.h"
#include "platform/foundation/UserLocale.h"
#include "tests/support/DeterministicHost.h"
#include "tests/support/Testing.h"

namespace vistrel::support {

/// Base for tests that need a host: a new deterministic one for each test. When the test's fields
/// have been destroyed, nothing that it created may be left in the host.
class HostTest : public ::testing::Test {
protected:
    HostTest() { (void)adoptUserLocale(); }
    ~HostTest() override {
        NSUserDefaults::resetStandardUserDefaults();
        host_.loop.clear();
        EXPECT_EQ(host_.network.runningTransfers(), 0) << "a transfer was left running";
        EXPECT_EQ(host_.files.openStreams(), 0) << "a file was left open";
        EXPECT_TRUE(host_.webEngine.pages().empty()) << "a web page was left alive";
        EXPECT_TRUE(host_.media.players().empty()) << "a player was left alive";
    }

    void advance(double seconds) { host_.advance(seconds); }
    /// Runs what is due now.
    void turn() { host_.loop.turn(); }
    bool runUntil(const std::function<bool()>& condition, double atMost = 3600) {
        return host_.runUntil(condition, atMost);
    }

    VirtualLoop& loop() { return host_.loop; }
    FaultyFiles& files() { return host_.files; }
    ScriptedNetwork& network() { return host_.network; }
    ScriptedWebEngine& webEngine() { return host_.webEngine; }
    SilentMedia& media() { return host_.media; }
    MemoryPreferences& preferences() { return host_.preferences; }
    RecordingDesktop& desktop() { return host_.desktop; }
    RecordingMediaControls& mediaControls() { return host_.mediaControls; }
    FixedDevice& device() { return host_.device; }
    ManualDisplay& display() { return host_.display; }
    std::vector<std::string>& logLines() { return host_.logLines; }
    DeterministicHost& deterministicHost() { return host_; }
    void setManners(bool careful) { host_.settings["manners/careful"] = careful ? "yes" : "no"; }

private:
    DeterministicHost host_;
};

}
