// 100,000 names listed and classified twice, as the downloads screen does for videos and for music,
// against `find` asked for the same two lists, and against a bare readdir loop that keeps nothing.
#include "bench/support/LinuxHost.h"

#include "platform/foundation/NSArrayPathUtilities.h"
#include "platform/foundation/NSFileManager.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

namespace {

using namespace vistrel;
namespace fs = std::filesystem;

constexpr int kFiles = 100'000;
constexpr int kRounds = 15;
constexpr const char* kFolder = "/var/mobile/Library/Downloads";
constexpr std::array<std::string_view, 4> kVideo{"m4v", "M4V", "mp4", "MP4"};
constexpr std::array<std::string_view, 2> kMusic{"mp3", "MP3"};

template <typename Work>
double secondsOf(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Names of the length that people give: half videos, a third music, the rest neither.
std::string nameOf(int index) {
    constexpr std::array extensions{"mp4", "mp3", "M4V", "mp4", "MP3", "txt"};
    return "Some Show S01E" + std::to_string(index) + " The Title." +
           extensions[static_cast<std::size_t>(index) % extensions.size()];
}

std::size_t classified() {
    auto& manager = NSFileManager::defaultManager();
    const auto videos =
        pathsMatchingExtensions(manager.contentsOfDirectoryAtPath(kFolder).names, kVideo);
    const auto music =
        pathsMatchingExtensions(manager.contentsOfDirectoryAtPath(kFolder).names, kMusic);
    return videos.size() + music.size();
}

void bareLoopTwice(const std::string& folder) {
    for (int listing = 0; listing < 2; ++listing) {
        DIR* open = opendir(folder.c_str());
        while (readdir(open)) {
        }
        closedir(open);
    }
}

/// The names come into this process, as ours do.
std::size_t findTwice(const std::string& folder) {
    const std::array lists{
        "\\( -name '*.m4v' -o -name '*.M4V' -o -name '*.mp4' -o -name '*.MP4' \\)",
        "\\( -name '*.mp3' -o -name '*.MP3' \\)"};
    std::array<char, 65536> buffer{};
    std::size_t names = 0;
    for (const char* list : lists) {
        const std::string command =
            "exec find '" + folder + "' -mindepth 1 -maxdepth 1 " + list + " -printf '%f\\n'";
        FILE* found = popen(command.c_str(), "re");
        while (const std::size_t size = fread(buffer.data(), 1, buffer.size(), found))
            names +=
                static_cast<std::size_t>(std::count(buffer.begin(), buffer.begin() + size, '\n'));
        pclose(found);
    }
    return names;
}

bool line(const char* name, double ours, double peer, double ratio, double bound, bool holds) {
    std::printf("%s: %.2f %.2f ms %.2fx %.2fx %s\n", name, ours * 1000, peer * 1000, ratio, bound,
                holds ? "ok" : "short");
    return holds;
}

}

int main() {
    const fs::path self = fs::read_symlink("/proc/self/exe");
    std::string pattern = (self.parent_path() / "listing-XXXXXX").string();
    const std::string root = mkdtemp(pattern.data());
    const std::string folder = root + kFolder;
    fs::create_directories(folder);
    for (int index = 0; index < kFiles; ++index)
        close(open((folder + "/" + nameOf(index)).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));

    const bench::LinuxHost linuxHost(root);
    double ours = 1e9;
    double bare = 1e9;
    double find = 1e9;
    std::size_t kept = 0;
    std::size_t found = 0;
    for (int round = 0; round < kRounds; ++round) {
        bare = std::min(bare, secondsOf([&] { bareLoopTwice(folder); }));
        ours = std::min(ours, secondsOf([&] { kept = classified(); }));
        find = std::min(find, secondsOf([&] { found = findTwice(folder); }));
    }
    fs::remove_all(root);
    if (kept != found || kept < static_cast<std::size_t>(kFiles) / 2) {
        std::fprintf(stderr, "listing: %zu names kept, %zu found\n", kept, found);
        return 1;
    }
    bool holds = line("listing/find", ours, find, find / ours, 5, ours * 5 <= find);
    holds &= line("listing/bare-readdir", ours, bare, ours / bare, 1.3, ours <= bare * 1.3);
    return holds ? 0 : 1;
}
