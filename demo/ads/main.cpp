#include "ads/GADServer.h"
#include "ads/Opener/GADSafetyPolicy.h"
#include "demo/ads/AdGalleryViewController.h"
#include "demo/ads/GalleryOptions.h"
#include "demo/ads/GalleryServer.h"
#include "platform/foundation/NSURL.h"
#include "platform/uikit/UIApplicationDelegate.h"
#include "platform/uikit/UIApplicationMain.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIWindow.h"

#include <cstdio>
#include <filesystem>
#include <unistd.h>

using namespace vistrel;

namespace {

class GalleryDelegate : public UIApplicationDelegate {
public:
    explicit GalleryDelegate(std::shared_ptr<UIViewController> gallery)
        : window_(std::make_shared<UIWindow>())
        , navigation_(UINavigationController::withRootViewController(std::move(gallery))) {}

    void applicationDidFinishLaunching(UIApplication&) override {
        window_->addSubview(navigation_->view());
        window_->makeKeyAndVisible();
    }

private:
    std::shared_ptr<UIWindow> window_;
    std::shared_ptr<UINavigationController> navigation_;
};

/// A device of its own for each run: nothing is left of it.
class TemporaryDevice {
public:
    TemporaryDevice()
        : path_(std::filesystem::temp_directory_path() /
                ("vistrel-ad-gallery-" + std::to_string(getpid()))) {}
    TemporaryDevice(const TemporaryDevice&) = delete;
    TemporaryDevice& operator=(const TemporaryDevice&) = delete;
    ~TemporaryDevice() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    std::string path() const { return path_.string(); }

private:
    std::filesystem::path path_;
};

std::string demoSiteProgram() {
    return (std::filesystem::read_symlink("/proc/self/exe").parent_path() / "vistrel-demo-site")
        .string();
}

int runGallery(int argc, char* argv[], const demo::GalleryOptions& options) {
    const bool isFile = !options.ad.empty() && !options.isAdAddress();
    std::unique_ptr<demo::GalleryServer> server;
    std::string address = options.server;
    if (address.empty()) {
        const std::string file =
            isFile ? std::filesystem::absolute(options.ad).string() : std::string();
        server = std::make_unique<demo::GalleryServer>(demoSiteProgram(), file);
        address = server->address();
    }
    const auto url = NSURL::URLWithString(address);
    if (!url || !isGADServer(*url)) {
        std::fputs("vistrel-ad-gallery: there is no ad server at http://HOST:PORT\n", stderr);
        return 1;
    }
    useGADServer(*url);
    GADSafetyPolicy::setShared(GADSafetyPolicy{});
    const TemporaryDevice device;
    UILaunchOptions launch;
    launch.deviceRoot = device.path();
    return UIApplicationMain(argc, argv, launch, [&options] {
        return std::make_shared<GalleryDelegate>(std::make_shared<demo::AdGalleryViewController>(
            options.ad.empty() ? std::string() : "own",
            options.isAdAddress() ? options.ad : std::string()));
    });
}

}

int main(int argc, char* argv[]) {
    std::string complaint;
    const auto options = demo::parseGalleryOptions(
        {argv + 1, static_cast<std::size_t>(argc > 0 ? argc - 1 : 0)}, complaint);
    if (!options) {
        std::fprintf(stderr, "vistrel-ad-gallery: %s\n", complaint.c_str());
        return 2;
    }
    if (options->help)
        std::fputs(demo::galleryHelpText().c_str(), stdout);
    else if (options->version)
        std::puts("vistrel-ad-gallery " VISTREL_VERSION);
    else
        return runGallery(argc, argv, *options);
    return 0;
}
