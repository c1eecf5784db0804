// 100,000 names listed and classified: once for videos, against a bare readdir loop that keeps
// nothing; and into videos and music, as the downloads screen does when it appears, against `find`
// for the same two lists.
#include "bench/support/LinuxHost.h"

#include "platform/foundation/NSArrayPathUtilities.h"
#include "platform/foundation/NSFileManager.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace vistrel;
namespace fs = std::filesystem;

constexpr int kFiles = 100'000;
constexpr int kRounds = 25;
constexpr const char* kFolder = "/var/mobile/Library/Downloads";
constexpr std::array<std::string_view, 4> kVideo{"m4v", "M4V", "mp4", "MP4"};
constexpr std::array<std::string_view, 2> kMusic{"mp3", "MP3"};

double secondsIn(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

/// Processor time of this process and of those it has waited for.
double processorSeconds() {
    timespec own{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &own);
    rusage children{};
    getrusage(RUSAGE_CHILDREN, &children);
    return static_cast<double>(own.tv_sec) + static_cast<double>(own.tv_nsec) / 1e9 +
           secondsIn(children.ru_utime) + secondsIn(children.ru_stime);
}

/// Nothing here waits, so processor time is the measure; a busy machine changes it less than the
/// clock's.
template <typename Work>
double secondsOf(Work work) {
    const double start = processorSeconds();
    work();
    return processorSeconds() - start;
}

/// Names of realistic length: half videos, a third music, the rest neither.
std::string nameOf(int index) {
    constexpr std::array extensions{"mp4", "mp3", "M4V", "mp4", "MP3", "txt"};
    return "Some Show S01E" + std::to_string(index) + " The Title." +
           extensions[static_cast<std::size_t>(index) % extensions.size()];
}

std::vector<std::string> namesWith(std::span<const std::string_view> extensions) {
    return pathsMatchingExtensions(
        NSFileManager::defaultManager().contentsOfDirectoryAtPath(kFolder).names, extensions);
}

void bareLoop(const std::string& folder) {
    DIR* open = opendir(folder.c_str());
    while (readdir(open)) {
    }
    closedir(open);
}

/// Brings the names into this process, as ours does.
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

    double once = 1e9;
    double both = 1e9;
    double bare = 1e9;
    double find = 1e9;
    std::size_t kept = 0;
    std::size_t found = 0;
    for (int round = 0; round < kRounds; ++round) {
        const bench::LinuxHost fresh(root);
        bare = std::min(bare, secondsOf([&] { bareLoop(folder); }));
        std::vector<std::string> videos;
        std::vector<std::string> music;
        once = std::min(once, secondsOf([&] { videos = namesWith(kVideo); }));
        both = std::min(
            both, secondsOf([&] {
                auto names =
                    NSFileManager::defaultManager().contentsOfDirectoryAtPath(kFolder).names;
                videos = pathsMatchingExtensions(names, kVideo);
                music = pathsMatchingExtensions(std::move(names), kMusic);
            }));
        kept = videos.size() + music.size();
        find = std::min(find, secondsOf([&] { found = findTwice(folder); }));
    }
    fs::remove_all(root);
    if (kept != found || kept < static_cast<std::size_t>(kFiles) / 2) {
        std::fprintf(stderr, "listing: %zu names kept, %zu found\n", kept, found);
        return 1;
    }
    bool holds = line("listing/find", both, find, find / both, 5, both * 5 <= find);
    holds &= line("listing/bare-readdir", once, bare, once / bare, 1.3, once <= bare * 1.3);
    return holds ? 0 : 1;
}
