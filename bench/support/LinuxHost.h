#pragma once
#include "platform/host/Host.h"
#include "platform/linux/files/DeviceFiles.h"
#include "platform/linux/loop/GLibEventLoop.h"
#include "platform/linux/network/CurlNetwork.h"

#include <string>

namespace bench {

/// The real loop, files and network over the benchmark's device root; the rest is
/// missing.
class LinuxHost {
public:
    explicit LinuxHost(const std::string& deviceRoot)
        : files_(deviceRoot)
        , network_(loop_) {
        host_.loop = &loop_;
        host_.files = &files_;
        host_.network = &network_;
        vistrel::host::install(&host_);
    }
    ~LinuxHost() { vistrel::host::install(nullptr); }
    LinuxHost(const LinuxHost&) = delete;
    LinuxHost& operator=(const LinuxHost&) = delete;

    vistrel::GLibEventLoop& loop() { return loop_; }

private:
    vistrel::GLibEventLoop loop_;
    vistrel::DeviceFiles files_;
    vistrel::CurlNetwork network_;
    vistrel::host::Host host_;
};

}
