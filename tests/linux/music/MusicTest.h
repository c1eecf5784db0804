#pragma once
#include "platform/foundation/NSURL.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/host/Display.h"
#include "platform/host/Host.h"
#include "platform/linux/files/DeviceFiles.h"
#include "platform/linux/loop/GLibEventLoop.h"
#include "platform/linux/modules/DeferredMedia.h"
#include "platform/linux/preferences/PlistPreferences.h"
#include "platform/media/AudioSession.h"
#include "platform/uikit/UIApplication.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace vistrel {

/// A device with the real loop, files and players, but no display.
class MusicTest : public testing::Test {
protected:
    MusicTest() {
        host_.loop = &loop_;
        host_.files = &files_;
        host_.preferences = &preferences_;
        host_.media = &media_;
        host_.display = &display_;
        host_.log = [this](const std::string& line) {
            log_.push_back(line);
        };
        host_.resourcePath = RESOURCES_FOLDER;
        host::install(&host_);
    }
    ~MusicTest() override {
        UIApplication::resetSharedApplication();
        AudioSessionReset();
        NSUserDefaults::resetStandardUserDefaults();
        host::install(nullptr);
        std::filesystem::remove_all(root_);
    }

    std::string machinePath(const std::string& name) const { return root_ + "/" + name; }
    static NSURL url(const std::string& name) { return NSURL::fileURLWithPath("/" + name); }
    void write(const std::string& name, const std::string& bytes) const {
        std::ofstream(machinePath(name), std::ios::binary) << bytes;
    }
    /// Encodes a tone; `options` are the encoder's.
    void makeTone(const std::string& name, double seconds, const std::string& options = "") const {
        const std::string command =
            "ffmpeg -nostdin -y -loglevel error -f lavfi -i sine=330:d=" + std::to_string(seconds) +
            " -c:a libmp3lame " + options + " '" + machinePath(name) + "'";
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
    }
    std::string contents(const std::string& name) const {
        std::ifstream file(machinePath(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::vector<std::string> log_;

private:
    struct NoDisplay : host::Display {
        void requestFrame() override {}
        void setFrameHandler(std::function<void(double now)>) override {}
        double scale() const override { return 1; }
    };
    static std::string freshFolder() {
        setenv("VISTREL_MODULES", MODULES_FOLDER, 1);
        std::string pattern = (std::filesystem::temp_directory_path() / "music-XXXXXX").string();
        return mkdtemp(pattern.data());
    }
    MediaSetup mediaSetup() {
        MediaSetup setup;
        setup.machinePath = [this](const std::string& path) {
            return root_ + path;
        };
        setup.log = [](const std::string&) {
        };
        return setup;
    }

    std::string root_ = freshFolder();
    GLibEventLoop loop_;
    DeviceFiles files_{root_};
    PlistPreferences preferences_{root_ + "/defaults.plist"};
    DeferredMedia media_{mediaSetup()};
    NoDisplay display_;
    host::Host host_;
};

}
