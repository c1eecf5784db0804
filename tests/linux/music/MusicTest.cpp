#include "tests/linux/music/MusicTest.h"

#include "platform/foundation/NSUserDefaults.h"
#include "platform/media/AudioSession.h"
#include "platform/uikit/UIApplication.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace vistrel {

namespace {

std::string freshFolder() {
    setenv("VISTREL_MODULES", MODULES_FOLDER, 1);
    std::string pattern = (std::filesystem::temp_directory_path() / "music-XXXXXX").string();
    return mkdtemp(pattern.data());
}

}

MusicTest::MusicTest()
    : root_(freshFolder())
    , files_(root_)
    , preferences_(root_ + "/defaults.plist")
    , media_(mediaSetup()) {
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

MusicTest::~MusicTest() {
    UIApplication::resetSharedApplication();
    AudioSessionReset();
    NSUserDefaults::resetStandardUserDefaults();
    host::install(nullptr);
    std::filesystem::remove_all(root_);
}

MediaSetup MusicTest::mediaSetup() {
    MediaSetup setup;
    setup.machinePath = [this](const std::string& path) {
        return root_ + path;
    };
    setup.log = [](const std::string&) {
    };
    return setup;
}

void MusicTest::write(const std::string& name, const std::string& bytes) const {
    std::ofstream(machinePath(name), std::ios::binary) << bytes;
}

void MusicTest::makeTone(const std::string& name, double seconds,
                         const std::string& options) const {
    const std::string command =
        "ffmpeg -nostdin -y -loglevel error -f lavfi -i sine=330:d=" + std::to_string(seconds) +
        " -c:a libmp3lame " + options + " '" + machinePath(name) + "'";
    ASSERT_EQ(std::system(command.c_str()), 0) << command;
}

std::string MusicTest::contents(const std::string& name) const {
    std::ifstream file(machinePath(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}
