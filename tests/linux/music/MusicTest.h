#pragma once
#include "platform/foundation/NSURL.h"
#include "platform/host/Display.h"
#include "platform/host/Host.h"
#include "platform/linux/files/DeviceFiles.h"
#include "platform/linux/loop/GLibEventLoop.h"
#include "platform/linux/modules/DeferredMedia.h"
#include "platform/linux/preferences/PlistPreferences.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vistrel {

/// A device with the real loop, files and players, but no display.
class MusicTest : public testing::Test {
protected:
    MusicTest();
    ~MusicTest() override;

    std::string machinePath(const std::string& name) const { return root_ + "/" + name; }
    static NSURL url(const std::string& name) { return NSURL::fileURLWithPath("/" + name); }
    void write(const std::string& name, const std::string& bytes) const;
    /// Encodes a tone; `options` are the encoder's.
    void makeTone(const std::string& name, double seconds, const std::string& options = "") const;
    std::string contents(const std::string& name) const;

    std::vector<std::string> log_;

private:
    struct NoDisplay : host::Display {
        void requestFrame() override {}
        void setFrameHandler(std::function<void(double now)>) override {}
        double scale() const override { return 1; }
    };
    MediaSetup mediaSetup();

    std::string root_;
    GLibEventLoop loop_;
    DeviceFiles files_;
    PlistPreferences preferences_;
    DeferredMedia media_;
    NoDisplay display_;
    host::Host host_;
};

}
