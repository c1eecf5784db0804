#include "platform/uikit/UIApplicationMain.h"

#include "platform/graphics/UIImage.h"
#include "platform/linux/main/BroadwayServer.h"
#include "platform/linux/main/GraphicsChoice.h"
#include "platform/linux/main/LinuxHost.h"
#include "platform/linux/window/PhoneWindow.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIApplicationDelegate.h"

#include <gtk/gtk.h>

#include <clocale>
#include <cstdio>

namespace vistrel {

namespace {

constexpr const char* kApplicationID = "org.vistrel.Vistrel";
/// What the phone shows while an application starts, by this name.
constexpr const char* kLaunchPicture = "Default.png";

bool openDisplay(bool serveToBrowser, BroadwayServer& broadway) {
    if (serveToBrowser) {
        if (!broadway.start()) {
            std::fputs("vistrel: gtk4-broadwayd cannot be started; is it installed?\n", stderr);
            return false;
        }
        std::printf("Open %s in a web browser.\n", broadway.address().c_str());
        std::fflush(stdout);
    } else {
        chooseRenderer();
    }
    if (gtk_init_check())
        return true;
    std::fputs("vistrel: no display; try 'vistrel --browser', or xvfb-run\n", stderr);
    return false;
}

/// Launches, shows the window and runs until the application ends.
int runApplication(const UILaunchOptions& options, const UIMainInterface& mainInterface,
                   LinuxHost& host) {
    // The largest picture there is; to make a window takes the toolkit longer than to read it.
    UIImage::readAhead(kLaunchPicture, PhoneWindow::expectedPixelsPerPoint(options.scale));
    PhoneWindow window(options.scale);
    host.setDisplay(&window.screen());
    auto& application = UIApplication::sharedApplication();
    application.setDelegate(mainInterface());
    application.finishLaunching();
    window.setFirstFrameHandler([&host, &options, &window] {
        if (options.didLaunch)
            options.didLaunch();
        host.webEngine().warmUp();
        window.setIcon();
    });
    window.setCloseHandler([&host] { host.loop().quit(0); });
    window.present();
    const int status = host.loop().run();
    application.terminate();
    UIApplication::resetSharedApplication();
    return status;
}

}

int UIApplicationMain(int, char*[], const UILaunchOptions& options,
                      const UIMainInterface& mainInterface) {
    std::setlocale(LC_ALL, "");
    // Desktops find the application's entry, and with it its icon, by this name.
    g_set_prgname(kApplicationID);
    BroadwayServer broadway;
    if (!openDisplay(options.serveToBrowser, broadway))
        return 1;
    LinuxHost host(options.deviceRoot);
    return runApplication(options, mainInterface, host);
}

}
