#pragma once
#include "platform/host/Host.h"
#include "platform/linux/crypto/LibraryCrypto.h"
#include "tests/support/ManualDisplay.h"
#include "tests/support/MemoryFiles.h"
#include "tests/support/MemoryPreferences.h"
#include "tests/support/RecordingDesktop.h"
#include "tests/support/RecordingMediaControls.h"
#include "tests/support/ScriptedNetwork.h"
#include "tests/support/ScriptedWebEngine.h"
#include "tests/support/SilentMedia.h"
#include "tests/support/VirtualLoop.h"

#include <map>

namespace vistrel::support {

/// A machine of fixed values.
class FixedDevice : public host::Device {
public:
    const host::DeviceIdentity& identity() override { return identity_; }
    host::DeviceIdentity& values() { return identity_; }

private:
    host::DeviceIdentity identity_{
        "Desktop", "Machine1,1", "Linux", "12.5", "0123456789abcdef0123456789abcdef01234567",
        {"en"}};
};

/// A whole host without a machine: nothing waits, nothing leaves the process, and the same test
/// sees the same order of events each time. Installed for as long as it lives.
class DeterministicHost {
public:
    DeterministicHost();
    ~DeterministicHost();
    DeterministicHost(const DeterministicHost&) = delete;
    DeterministicHost& operator=(const DeterministicHost&) = delete;

    void advance(double seconds) { loop.advance(seconds); }
    bool runUntil(const std::function<bool()>& condition, double atMost = 3600) {
        return loop.runUntil(condition, atMost);
    }

    VirtualLoop loop;
    MemoryFiles files;
    ScriptedNetwork network;
    ScriptedWebEngine webEngine;
    SilentMedia media;
    MemoryPreferences preferences;
    RecordingDesktop desktop;
    RecordingMediaControls mediaControls;
    FixedDevice device;
    ManualDisplay display;
    LibraryCrypto crypto;
    std::vector<std::string> logLines;
    std::map<std::string, std::string> translations;
    /// By "group/key".
    std::map<std::string, std::string> settings;
    host::Host host;
};

}
