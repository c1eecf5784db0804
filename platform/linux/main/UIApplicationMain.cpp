#include "platform/uikit/UIApplicationMain.h"

#include "platform/foundation/NSURL.h"
#include "platform/foundation/UserLocale.h"
#include "platform/graphics/UIImage.h"
#include "platform/linux/files/DeviceRoot.h"
#include "platform/linux/main/BroadwayServer.h"
#include "platform/linux/main/GraphicsChoice.h"
#include "platform/linux/main/LinuxHost.h"
#include "platform/linux/main/RunningInstance.h"
#include "platform/linux/main/RuntimeFolder.h"
#include "platform/linux/window/PhoneWindow.h"
#include "platform/linux/window/ToolkitLog.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIApplicationDelegate.h"

#include <glib-unix.h>
#include <gtk/gtk.h>

#include <csignal>
#include <cstdio>

namespace vistrel {

namespace {

constexpr const char* kApplicationID = "org.vistrel.Vistrel";
/// The phone shows the picture of this name while an application starts.
constexpr const char* kLaunchPicture = "Default.png";

bool openDisplay(bool serveToBrowser, BroadwayServer& broadway, RuntimeFolder& runtimeFolder) {
    if (serveToBrowser) {
        runtimeFolder.replaceForDisplay();
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

void openAddress(const std::string& address) {
    auto& application = UIApplication::sharedApplication();
    const auto url = NSURL::URLWithString(address);
    if (url && application.delegate())
        application.delegate()->applicationHandleOpenURL(application, *url);
}

/// Raises the process that already runs on this device root.
int handOver(const RunningInstance& instance, const std::string& deviceRoot,
             const std::string& address) {
    if (instance.activateFirst(address))
        return 0;
    std::fprintf(stderr, "vistrel: already running on %s, and it cannot be reached\n",
                 deviceRoot.c_str());
    return 1;
}

/// The window's close button, the session's end and Ctrl+C all end the application in order.
void quitOnSignals(host::EventLoop& loop) {
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
        const GSourceFunc quit = [](gpointer data) -> gboolean {
            static_cast<host::EventLoop*>(data)->quit(0);
            return G_SOURCE_CONTINUE;
        };
        g_unix_signal_add(signal, quit, &loop);
    }
}

/// Launches, shows the window and runs until the application ends.
int runApplication(const UILaunchOptions& options, const UIMainInterface& mainInterface,
                   LinuxHost& host, RunningInstance& instance) {
    // The largest picture. The toolkit needs longer to create a window than this takes to read.
    UIImage::readAhead(kLaunchPicture, WindowSize::initialPixelsPerPoint(options.scale));
    PhoneWindow window(options.scale);
    host.setDisplay(&window.screen());
    auto& application = UIApplication::sharedApplication();
    application.setDelegate(mainInterface());
    application.finishLaunching();
    window.setFirstFrameHandler([&host, &instance, &options, &window] {
        if (options.didLaunch)
            options.didLaunch();
        openAddress(options.openAddress);
        instance.listen(
            [&window](const std::vector<std::string>& addresses, const std::string& startupToken) {
                for (const std::string& address : addresses)
                    openAddress(address);
                window.raise(startupToken);
            });
        window.setDropHandler(openAddress);
        host.webEngine().readAhead();
        window.setIcon();
    });
    quitOnSignals(host.loop());
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
    filterToolkitLog();
    gtk_disable_setlocale();
    if (const std::string missing = adoptUserLocale(); !missing.empty())
        std::fprintf(stderr, "vistrel: the locale %s is not installed; try 'locale -a'\n",
                     missing.c_str());
    // Desktops find the application's desktop entry and icon by this name.
    g_set_prgname(kApplicationID);
    const std::string deviceRoot =
        options.deviceRoot.empty() ? defaultDeviceRoot() : options.deviceRoot;
    RuntimeFolder runtimeFolder;
    runtimeFolder.replaceMissing();
    RunningInstance instance(deviceRoot, options.deviceRoot.empty());
    if (!instance.isFirst())
        return handOver(instance, deviceRoot, options.openAddress);
    BroadwayServer broadway;
    if (!openDisplay(options.serveToBrowser, broadway, runtimeFolder))
        return 1;
    LinuxHost host(deviceRoot);
    return runApplication(options, mainInterface, host, instance);
}

}
