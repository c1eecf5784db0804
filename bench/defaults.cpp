// 10,000 changes of the user defaults, a hundred per turn of the loop, every turn saved
// atomically and synced to disk, within a bound in seconds.
#include "platform/foundation/NSRunLoop.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/linux/loop/GLibEventLoop.h"
#include "platform/linux/preferences/PlistPreferences.h"

#include "platform/host/Host.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

namespace {
using namespace vistrel;
namespace fs = std::filesystem;

constexpr int kChanges = 10'000;
constexpr int kChangesATurn = 100;
constexpr double kBound = 5;

/// Seconds until the last change is on disk.
double change(GLibEventLoop& loop) {
    const auto start = std::chrono::steady_clock::now();
    int made = 0;
    std::function<void()> turn = [&] {
        for (int count = 0; count < kChangesATurn; ++count, ++made)
            NSUserDefaults::standardUserDefaults().setObjectForKey(
                Value(made), "key" + std::to_string(made % 64));
        if (made < kChanges)
            NSRunLoop::performAfterDelay(0, turn);
        else
            loop.quit(NSUserDefaults::standardUserDefaults().synchronize() ? 0 : 1);
    };
    NSRunLoop::performAfterDelay(0, turn);
    const int status = loop.run();
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return status == 0 ? seconds : 1e9;
}
}

int main() {
    const fs::path self = fs::read_symlink("/proc/self/exe");
    std::string pattern = (self.parent_path() / "defaults-XXXXXX").string();
    const std::string folder = mkdtemp(pattern.data());
    GLibEventLoop loop;
    PlistPreferences preferences(folder + "/store.plist");
    host::Host host;
    host.loop = &loop;
    host.preferences = &preferences;
    host::install(&host);
    const double seconds = change(loop);
    NSUserDefaults::resetStandardUserDefaults();
    const float last = NSUserDefaults::standardUserDefaults().floatForKey(
        "key" + std::to_string((kChanges - 1) % 64));
    NSUserDefaults::resetStandardUserDefaults();
    host::install(nullptr);
    fs::remove_all(folder);
    const bool holds = seconds <= kBound && last == kChanges - 1;
    std::printf("defaults/10000-changes: %.3f %.3f s %.2fx %.2fx %s\n", seconds, kBound,
                kBound / seconds, 1.0, holds ? "ok" : "short");
    return holds ? 0 : 1;
}
