#pragma once
#include "platform/host/Host.h"
#include "platform/linux/crypto/LibraryCrypto.h"
#include "tests/support/FaultyFiles.h"
#include "tests/support/ManualDisplay.h"
#include "tests/support/MemoryPreferences.h"
#include "tests/support/RecordingDesktop.h"
#include "tests/support/RecordingMediaControls.h"
#include "tests/support/ScriptedNetwork.h"
#include "tests/support/ScriptedWebEngine.h"
#include "tests/support/SilentMedia.h"
#include "tests/support/VirtualLoop.h"

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
    DeterministicHost()
        : network(loop)
        , webEngine(loop)
        , media(loop)
        , desktop(loop)
        , display(loop) {
        host.loop = &loop;
        host.files = &files;
        host.network = &network;
        host.webEngine = &webEngine;
        host.media = &media;
        host.preferences = &preferences;
        host.desktop = &desktop;
        host.mediaControls = &mediaControls;
        host.device = &device;
        host.display = &display;
        host.crypto = &crypto;
        host.log = [this](const std::string& line) {
            logLines.push_back(line);
        };
        host.translate = [this](const std::string& key) {
            const auto found = translations.find(key);
            return found == translations.end() ? std::string() : found->second;
        };
        host.setting = [this](const std::string& group,
                              const std::string& key) -> std::optional<std::string> {
            const auto found = settings.find(group + "/" + key);
            if (found == settings.end())
                return std::nullopt;
            return found->second;
        };
        host::install(&host);
    }
    ~DeterministicHost() {
        loop.clear();
        host::install(nullptr);
    }
    DeterministicHost(const DeterministicHost&) = delete;
    DeterministicHost& operator=(const DeterministicHost&) = delete;

    void advance(double seconds) { loop.advance(seconds); }
    bool runUntil(const std::function<bool()>& condition, double atMost = 3600) {
        return loop.runUntil(condition, atMost);
    }

    VirtualLoop loop;
    FaultyFiles files;
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
