#include "bench/support/MusicHost.h"

#include "platform/linux/files/DeviceRoot.h"
#include "platform/uikit/ImageRenderer.h"
#include "platform/uikit/UIApplication.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <utility>

namespace bench {

namespace {

constexpr double kFrame = 1.0 / 60;

std::string freshFolder() {
    setenv("VISTREL_MODULES", BENCH_MODULES, 1);
    std::string pattern =
        (std::filesystem::temp_directory_path() / "vistrel-bench-XXXXXX").string();
    return mkdtemp(pattern.data());
}

}

MusicHost::MusicHost()
    : root_(freshFolder())
    , files_(root_)
    , preferences_(root_ + "/defaults.plist")
    , media_(mediaSetup()) {
    host_.loop = &loop_;
    host_.files = &files_;
    host_.preferences = &preferences_;
    host_.media = &media_;
    host_.display = &display_;
    host_.log = [](const std::string& line) {
        std::fprintf(stderr, "%s\n", line.c_str());
    };
    host_.resourcePath = BENCH_RESOURCES;
    vistrel::host::install(&host_);
}

MusicHost::~MusicHost() {
    vistrel::host::install(nullptr);
    std::filesystem::remove_all(root_);
}

vistrel::MediaSetup MusicHost::mediaSetup() const {
    vistrel::MediaSetup setup;
    setup.machinePath = [this](const std::string& path) {
        return root_ + path;
    };
    setup.log = [](const std::string&) {
    };
    return setup;
}

void MusicHost::runFor(double seconds) {
    loop_.schedule(seconds, [this] { loop_.quit(0); });
    loop_.run();
}

void MusicHost::Display::setFrameHandler(std::function<void(double now)> newHandler) {
    handler = std::move(newHandler);
}

void MusicHost::Display::requestFrame() {
    if (std::exchange(asked, true))
        return;
    vistrel::host::current().loop->schedule(kFrame, [this] {
        asked = false;
        ++frames;
        if (handler)
            handler(vistrel::host::current().loop->now());
        vistrel::renderViewToBitmap(vistrel::UIApplication::sharedApplication().screenView(), 1);
    });
}

}
