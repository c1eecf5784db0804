// Scrolling a downloads folder of 10,000 files, frame by frame with the software renderer: the real
// downloads screen in the real window, against the toolkit's list view and against a bare widget
// that appends cached row nodes. Each contender runs in a separate process, and they take turns.
#include "bench/support/ScrollContender.h"
#include "downloads/DownloadsViewController.h"
#include "platform/linux/main/LinuxHost.h"
#include "platform/linux/window/PhoneWindow.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UITableView.h"
#include "platform/uikit/UIWindow.h"

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

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

/// A contender in a separate process.
class Contender {
public:
    Contender(const std::string& program, const char* name) {
        int requests[2];
        int answers[2];
        if (pipe2(requests, O_CLOEXEC) != 0 || pipe2(answers, O_CLOEXEC) != 0)
            std::abort();
        process_ = fork();
        if (process_ == 0) {
            dup2(requests[0], STDIN_FILENO);
            dup2(answers[1], STDOUT_FILENO);
            execl(program.c_str(), program.c_str(), "--contender", name, nullptr);
            _exit(1);
        }
        close(requests[0]);
        close(answers[1]);
        requests_ = requests[1];
        answers_ = fdopen(answers[0], "r");
    }
    ~Contender() {
        close(requests_);
        std::fclose(answers_);
        waitpid(process_, nullptr, 0);
    }
    Contender(const Contender&) = delete;
    Contender& operator=(const Contender&) = delete;

    /// Measures another block of frames. False when the process has failed.
    bool scroll() {
        double mean = 0;
        double longest = 0;
        if (write(requests_, "", 1) != 1 || std::fscanf(answers_, "%lf %lf", &mean, &longest) != 2)
            return false;
        means_.push_back(mean);
        longest_ = std::max(longest_, longest);
        return true;
    }
    const std::vector<double>& means() const { return means_; } ///< milliseconds per frame
    double longest() const { return longest_; }                 ///< milliseconds

private:
    pid_t process_;
    int requests_;
    FILE* answers_;
    std::vector<double> means_;
    double longest_ = 0;
};

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

bool print(const char* name, double ours, double peer, double ratio, double bound) {
    const bool holds = ratio <= bound;
    std::printf("%s: %.3f %.3f ms %.2fx %.2fx %s", name, ours, peer, ratio, bound,
                holds ? "ok" : "short");
    return holds;
}

bool report(const char* name, const Contender& ours, const Contender& peer, double bound) {
    std::vector<double> ratios(ours.means().size());
    std::transform(ours.means().begin(), ours.means().end(), peer.means().begin(), ratios.begin(),
                   std::divides());
    const bool holds =
        print(name, median(ours.means()), median(peer.means()), median(ratios), bound);
    const auto [least, most] = std::minmax_element(peer.means().begin() + 1, peer.means().end());
    std::printf(", spread %.0f %%\n", (*most / *least - 1) * 100);
    return holds;
}

int compareAll(const std::string& program) {
    // In short turns with all three running: a machine's speed changes within seconds, and must be
    // the same for all contenders.
    constexpr int kTurns = 21;
    std::signal(SIGPIPE, SIG_IGN);
    Contender ours(program, "ours");
    Contender list(program, "list");
    Contender nodes(program, "nodes");
    // The first turn waits for the windows to open.
    for (int turn = 0; turn < kTurns; ++turn) {
        if (!ours.scroll() || !list.scroll() || !nodes.scroll()) {
            std::fprintf(stderr, "A contender has failed.\n");
            return 1;
        }
    }
    constexpr double kLongestFrame = 16;
    bool holds = report("scroll frame against a list view", ours, list, 0.6);
    holds &= report("scroll frame against cached row nodes", ours, nodes, 1.5);
    holds &= print("scroll longest frame against 16 ms", ours.longest(), kLongestFrame,
                   ours.longest() / kLongestFrame, 1);
    std::printf("\n");
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
    // Always on a private display, so that nothing else is composed.
    if (argc == 1) {
        execl(VISTREL_IN_DISPLAY, VISTREL_IN_DISPLAY, program.c_str(), "--on-display", nullptr);
        std::perror("in-display");
        return 1;
    }
    return vistrel::compareAll(program);
}
