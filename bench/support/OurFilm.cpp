#include "platform/foundation/NSRunLoop.h"
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

constexpr double kStart = 3; ///< seconds until playing is steady
std::shared_ptr<OvoMoviePlayerViewController> screen;

void say(const char* what, unsigned number) {
    std::printf("%s %u\n", what, number);
    std::fflush(stdout);
}

/// The frames shown in the measured seconds.
void count(double seconds) {
    NSRunLoop::performAfterDelay(kStart, [seconds] {
        const unsigned before = screen->mp()->framesShown();
        NSRunLoop::performAfterDelay(
            seconds, [before] { say("frames", screen->mp()->framesShown() - before); });
    });
}

void play(const std::string& path, double seconds) {
    auto* delegate =
        dynamic_cast<VistrelAppDelegate*>(UIApplication::sharedApplication().delegate());
    screen = OvoMoviePlayerViewController::withURL(NSURL::fileURLWithPath(path));
    delegate->navigationController()->presentModalViewController(screen, true);
    screen->readyPlayer();
    count(seconds);
}

}
}

/// The application with a film on its screen. Arguments: the device root, the film's device path,
/// and the seconds in which frames are counted, from the third on.
int main(int argc, char* argv[]) {
    using namespace vistrel;
    UILaunchOptions options;
    options.deviceRoot = argv[1];
    options.scale = 1.5;
    options.didLaunch = [argv] {
        NSRunLoop::performAfterDelay(0.5, [argv] { play(argv[2], std::strtod(argv[3], nullptr)); });
    };
    const int status = UIApplicationMain(argc, argv, options, makeMainInterface);
    screen = nullptr;
    return status;
}
