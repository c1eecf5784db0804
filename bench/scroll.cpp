// Scrolling a downloads folder of 10,000 files, frame by frame with the software renderer: the real
// downloads screen in the real window, against the toolkit's list view and against a bare widget
// that appends cached row nodes. Each contender runs in a process of its own.
#include "bench/support/ScrollContender.h"
#include "downloads/DownloadsViewController.h"
#include "platform/linux/main/LinuxHost.h"
#include "platform/linux/window/PhoneWindow.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UITableView.h"
#include "platform/uikit/UIWindow.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace vistrel {
namespace {

constexpr const char* kResources = VISTREL_BUNDLE_DIR;

/// A device whose downloads folder holds the rows' files.
class FullDevice {
public:
    FullDevice()
        : root_(std::filesystem::temp_directory_path() /
                ("vistrel-bench-scroll-" + std::to_string(getpid()))) {
        const auto folder = root_ / "var/mobile/Library/Downloads";
        std::filesystem::create_directories(folder);
        for (int row = 0; row < bench::kRows; ++row)
            std::ofstream(folder / (bench::rowName(row) + ".mp4"));
    }
    ~FullDevice() { std::filesystem::remove_all(root_); }
    std::string root() const { return root_.string(); }

private:
    std::filesystem::path root_;
};

void runDownloadsScreen() {
    const FullDevice device;
    LinuxHost host(device.root());
    host::current().resourcePath = kResources;
    PhoneWindow phone(1);
    host.setDisplay(&phone.screen());
    UIApplication::sharedApplication();
    auto window = std::make_shared<UIWindow>();
    auto downloads = std::make_shared<DownloadsViewController>();
    auto navigation = UINavigationController::withRootViewController(downloads);
    window->addSubview(navigation->view());
    window->makeKeyAndVisible();
    const bench::FrameMeter meter(
        phone.screen().widget(),
        [&](double offset) {
            downloads->tableView()->setContentOffset({0, offset});
        },
        [&] { host.loop().quit(0); });
    phone.present();
    host.loop().run();
    navigation->view()->removeFromSuperview();
    UIApplication::resetSharedApplication();
}

struct Cost {
    double mean = 1e9; ///< milliseconds
    double longest = 1e9;

    void keepBest(const Cost& other) {
        mean = std::min(mean, other.mean);
        longest = std::min(longest, other.longest);
    }
};

Cost measure(const std::string& program, const char* contender) {
    FILE* output = popen((program + " --contender " + contender).c_str(), "r");
    Cost cost;
    if (!output || std::fscanf(output, "%lf %lf", &cost.mean, &cost.longest) != 2)
        cost = {};
    if (output)
        pclose(output);
    return cost;
}

bool report(const char* name, double ours, double peer, double bound) {
    const double ratio = ours / peer;
    const bool holds = ratio <= bound && ours < 1e8;
    std::printf("%s: %.3f %.3f ms %.2fx %.2fx %s\n", name, ours, peer, ratio, bound,
                holds ? "ok" : "short");
    return holds;
}

int compareAll(const std::string& program) {
    // In turns, so that a busy machine disturbs all alike; it only ever makes a run worse.
    constexpr int kTurns = 3;
    Cost ours;
    Cost list;
    Cost nodes;
    for (int turn = 0; turn < kTurns; ++turn) {
        ours.keepBest(measure(program, "ours"));
        list.keepBest(measure(program, "list"));
        nodes.keepBest(measure(program, "nodes"));
    }
    constexpr double kLongestFrame = 16;
    bool holds = report("scroll frame against a list view", ours.mean, list.mean, 0.6);
    holds &= report("scroll frame against cached row nodes", ours.mean, nodes.mean, 1.5);
    holds &= report("scroll longest frame against 16 ms", ours.longest, kLongestFrame, 1);
    return holds ? 0 : 1;
}

int runContender(const std::string& name) {
    setenv("GSK_RENDERER", "cairo", 1);
    gtk_init();
    if (name == "ours")
        runDownloadsScreen();
    else if (name == "list")
        bench::runListView(kResources);
    else
        bench::runCachedNodes(kResources);
    return 0;
}

}
}

int main(int argc, char* argv[]) {
    const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
    if (argc == 3 && std::string(argv[1]) == "--contender")
        return vistrel::runContender(argv[2]);
    // Always on a display of its own, so that nothing else is composed.
    if (argc == 1) {
        execl(VISTREL_IN_DISPLAY, VISTREL_IN_DISPLAY, program.c_str(), "--on-display", nullptr);
        std::perror("in-display");
        return 1;
    }
    return vistrel::compareAll(program);
}
