#include "downloads/DownloadsViewController.h"
#include "platform/foundation/NSRunLoop.h"
#include "platform/host/EventLoop.h"
#include "platform/host/Host.h"
#include "platform/media/MPMoviePlayerController.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIApplicationMain.h"
#include "platform/uikit/UINavigationController.h"
#include "shell/MainInterface.h"
#include "shell/VistrelAppDelegate.h"
#include "web/OvoMoviePlayerViewController.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace vistrel {

namespace {

constexpr double kRest = 2;  ///< seconds until the application has nothing left to prepare
constexpr double kStart = 3; ///< seconds from then until playing is steady
std::shared_ptr<OvoMoviePlayerViewController> screen;

void say(const char* what, unsigned number) {
    std::printf("%s %u\n", what, number);
    std::fflush(stdout);
}

/// The milliseconds from the request to play until a frame of the moving picture has been drawn.
void awaitFirst(double asked) {
    if (screen->mp() && screen->mp()->framesShown() > 0)
        say("first", static_cast<unsigned>((host::current().loop->now() - asked) * 1000));
    else
        NSRunLoop::performAfterDelay(
            0.001, [asked] { awaitFirst(asked); });
}

/// The frames shown in the measured seconds.
void count(double seconds) {
    NSRunLoop::performAfterDelay(
        kStart,
        [seconds] {
            const unsigned before = screen->mp()->framesShown();
            NSRunLoop::performAfterDelay(
                seconds, [before] { say("frames", screen->mp()->framesShown() - before); });
        });
}

UINavigationController& navigation() {
    auto* delegate =
        dynamic_cast<VistrelAppDelegate*>(UIApplication::sharedApplication().delegate());
    return *delegate->navigationController();
}

void play(const std::string& path, double seconds) {
    const double asked = host::current().loop->now();
    const bool isAddress = path.find("://") != std::string::npos;
    screen = OvoMoviePlayerViewController::withURL(isAddress ? *NSURL::URLWithString(path)
                                                             : NSURL::fileURLWithPath(path));
    navigation().presentModalViewController(screen, true);
    screen->readyPlayer();
    awaitFirst(asked);
    count(seconds);
}

}
}

/// The application with its library on the screen, and then a film. Arguments: the device root, the
/// film's device path or address, and the seconds in which frames are counted, from the third on.
int main(int argc, char* argv[]) {
    using namespace vistrel;
    UILaunchOptions options;
    options.deviceRoot = argv[1];
    options.scale = 1.5;
    options.didLaunch = [argv] {
        navigation().pushViewController(std::make_shared<DownloadsViewController>(), true);
        NSRunLoop::performAfterDelay(kRest,
                                     [argv] { play(argv[2], std::strtod(argv[3], nullptr)); });
    };
    const int status = UIApplicationMain(argc, argv, options, makeMainInterface);
    screen = nullptr;
    return status;
}
