#pragma once
#include "platform/host/Host.h"
#include "platform/linux/crypto/LibraryCrypto.h"
#include "platform/linux/desktop/GioDesktop.h"
#include "platform/linux/desktop/LinuxDevice.h"
#include "platform/linux/files/DeviceFiles.h"
#include "platform/linux/loop/GLibEventLoop.h"
#include "platform/linux/main/ProgramPaths.h"
#include "platform/linux/main/SettingsFile.h"
#include "platform/linux/modules/DeferredMailService.h"
#include "platform/linux/modules/DeferredMedia.h"
#include "platform/linux/modules/DeferredNetwork.h"
#include "platform/linux/modules/DeferredWebEngine.h"
#include "platform/linux/mpris/MprisControls.h"
#include "platform/linux/preferences/PlistPreferences.h"

#include <memory>
#include <string>
#include <thread>

namespace vistrel {

/// The real host: loop, files, network, page engine and players of this machine. It is the
/// installed host for its lifetime.
class LinuxHost {
public:
    explicit LinuxHost(const std::string& deviceRoot);
    ~LinuxHost();

    void setDisplay(host::Display* display) { host_.display = display; }
    GLibEventLoop& loop() { return loop_; }
    DeferredWebEngine& webEngine() { return webEngine_; }

private:
    /// The address of a device's file as other programs know it; other addresses are unchanged.
    std::string machineAddress(const std::string& url) const;
    WebEngineSetup webEngineSetup();
    MediaSetup mediaSetup();

    ProgramPaths paths_;
    SettingsFile settings_;
    GLibEventLoop loop_;
    std::string root_;
    DeviceFiles files_;
    DeferredNetwork network_;
    PlistPreferences preferences_;
    DeferredMailService mail_;
    std::shared_ptr<GioDesktop> desktop_;
    LinuxDevice device_;
    LibraryCrypto crypto_;
    DeferredWebEngine webEngine_;
    DeferredMedia media_;
    MprisControls mediaControls_;
    host::Host host_;
    std::jthread strayFilesRemoval_;
};

}
