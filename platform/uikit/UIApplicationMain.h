#pragma once
#include <functional>
#include <memory>
#include <string>

namespace vistrel {
class UIApplicationDelegate;

/// What the main interface file creates: called once the host is set up, before the application
/// launches.
using UIMainInterface = std::function<std::shared_ptr<UIApplicationDelegate>()>;

/// How the program was asked to run.
struct UILaunchOptions {
    std::string deviceRoot;      ///< machine directory of the device's files; empty: the default
    double scale = 0;            ///< window pixels per point; 0: to fit the monitor
    bool serveToBrowser = false; ///< show the window in a web browser instead of a display
    std::string openAddress;     ///< opened after the launch, or by the process already running
    std::function<void()> didLaunch; ///< called once the first frame is on screen
};

/// Sets the host up, creates the application and its delegate, and runs the loop. Returns the exit
/// status: 1 with a message on standard error when there is no display. Provided by the host's
/// folder.
int UIApplicationMain(int argc, char* argv[], const UILaunchOptions& options,
                      const UIMainInterface& mainInterface);

}
