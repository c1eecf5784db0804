#pragma once
#include "platform/host/Display.h"
#include "platform/host/Host.h"
#include "platform/linux/files/DeviceFiles.h"
#include "platform/linux/loop/GLibEventLoop.h"
#include "platform/linux/modules/DeferredMedia.h"
#include "platform/linux/preferences/PlistPreferences.h"

#include <string>

namespace bench {

/// The real loop, files and players on a temporary folder; frames are composed into a bitmap.
class MusicHost {
public:
    MusicHost();
    ~MusicHost();
    MusicHost(const MusicHost&) = delete;
    MusicHost& operator=(const MusicHost&) = delete;

    const std::string& root() const { return root_; }
    /// Runs the loop for that long.
    void runFor(double seconds);
    int frames() const { return display_.frames; }
    /// In place of one that paints frames into a picture.
    void setDisplay(vistrel::host::Display* display) { host_.display = display; }

private:
    struct Display : vistrel::host::Display {
        void requestFrame() override;
        void setFrameHandler(std::function<void(double now)> handler) override;
        double scale() const override { return 1; }
        bool isInFront() const override { return true; }

        std::function<void(double now)> handler;
        bool asked = false;
        int frames = 0;
    };
    vistrel::MediaSetup mediaSetup() const;

    std::string root_;
    vistrel::GLibEventLoop loop_;
    vistrel::DeviceFiles files_;
    vistrel::PlistPreferences preferences_;
    vistrel::DeferredMedia media_;
    Display display_;
    vistrel::host::Host host_;
};

}
