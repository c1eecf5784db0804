// A 1 GiB file from loopback to disk, through the connection and the file handle as the
// download screen uses them, against the usual command line tools.
#include "bench/Bench.h"
#include "bench/support/FileServer.h"
#include "bench/support/LinuxHost.h"

#include "platform/foundation/NSError.h"
#include "platform/foundation/NSFileHandle.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSURLConnection.h"
#include "platform/foundation/NSURLResponse.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

namespace {

using namespace vistrel;
namespace fs = std::filesystem;

constexpr off_t kMebibyte = off_t{1024} * 1024;
constexpr off_t kSize = 1024 * kMebibyte;
constexpr const char* kFolder = "/var/mobile/Library/Downloads";
constexpr int kRounds = 3;

double now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

/// The longest time between two waits of the loop.
double longestTurn = 0;
double turnStart = 0;

/// The clock minus the time in which this process was runnable but others ran.
double ownTime() {
    static const int file = open("/proc/self/schedstat", O_RDONLY | O_CLOEXEC);
    char text[96] = {};
    double waited = 0;
    if (pread(file, text, sizeof text - 1, 0) > 0)
        std::sscanf(text, "%*s %lf", &waited);
    return now() - waited / 1e9;
}

gint pollAndMeasure(GPollFD* descriptors, guint count, gint timeout) {
    if (turnStart > 0)
        longestTurn = std::max(longestTurn, ownTime() - turnStart);
    const gint result = g_poll(descriptors, count, timeout);
    turnStart = ownTime();
    return result;
}

class Download : public NSURLConnectionDelegate {
public:
    explicit Download(host::EventLoop& loop)
        : loop_(loop) {}
    void connectionDidReceiveResponse(NSURLConnection&, const NSURLResponse& response) override {
        const std::string path = std::string(kFolder) + "/" + response.suggestedFilename();
        NSFileManager::defaultManager().createFileAtPath(path);
        file_ = NSFileHandle::fileHandleForUpdatingAtPath(path);
    }
    void connectionDidReceiveData(NSURLConnection& connection,
                                  std::span<const std::byte> data) override {
        file_->seekToEndOfFile();
        if (file_->writeData(data)) {
            connection.cancel();
            loop_.quit(1);
        }
    }
    void connectionDidFinishLoading(NSURLConnection&) override {
        loop_.quit(file_->closeFile() ? 1 : 0);
    }
    void connectionDidFailWithError(NSURLConnection&, const NSError& error) override {
        std::fprintf(stderr, "%s\n", error.description().c_str());
        loop_.quit(1);
    }

private:
    host::EventLoop& loop_;
    std::shared_ptr<NSFileHandle> file_;
};

/// The measured process: fetches one address into a device root.
int fetch(const std::string& url, const std::string& root, bool measuresTurns) {
    if (measuresTurns)
        g_main_context_set_poll_func(nullptr, pollAndMeasure);
    bench::LinuxHost linuxHost(root);
    NSFileManager::defaultManager().createDirectoryAtPath(kFolder, true);
    NSURLConnection::withRequestDelegate(
        NSURLRequest(NSURL::URLWithString(url),
                     NSURLRequestCachePolicy::ReloadIgnoringLocalCacheData, 45.0),
        std::make_shared<Download>(linuxHost.loop()));
    const int status = linuxHost.loop().run();
    std::printf("%.6f\n", longestTurn);
    return status;
}

struct Run {
    double seconds = std::numeric_limits<double>::infinity();
    double cpu = std::numeric_limits<double>::infinity();
    long peakKiB = 0;
    double longestTurn = 0;
};

Run run(const std::vector<std::string>& command, const std::string& file, off_t size) {
    std::vector<char*> arguments;
    for (const std::string& word : command)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    fs::remove(file);
    sync();
    int ends[2];
    if (pipe(ends) != 0)
        return {};
    const double start = now();
    const pid_t child = fork();
    if (child == 0) {
        dup2(ends[1], STDOUT_FILENO);
        close(ends[0]);
        execvp(arguments[0], arguments.data());
        _exit(127);
    }
    close(ends[1]);
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    Run result;
    result.seconds = now() - start;
    char text[64] = {};
    if (read(ends[0], text, sizeof text - 1) > 0)
        result.longestTurn = std::atof(text);
    close(ends[0]);
    struct stat attributes {};
    if (status != 0 || stat(file.c_str(), &attributes) != 0 || attributes.st_size != size) {
        std::fprintf(stderr, "download: %s failed\n", command.front().c_str());
        std::exit(1);
    }
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    result.cpu = seconds(usage.ru_utime) + seconds(usage.ru_stime);
    result.peakKiB = usage.ru_maxrss;
    fs::remove(file);
    return result;
}

/// The best of each figure; the worst of those that every run must keep small.
Run best(const Run& a, const Run& b) {
    return {std::min(a.seconds, b.seconds), std::min(a.cpu, b.cpu), std::max(a.peakKiB, b.peakKiB),
            std::max(a.longestTurn, b.longestTurn)};
}

bool line(const char* name, double ours, double peer, const char* unit, double ratio, double bound,
          bool holds) {
    std::printf("%s: %.3f %.3f %s %.2fx %.2fx %s\n", name, ours, peer, unit, ratio, bound,
                holds ? "ok" : "short");
    std::fflush(stdout);
    return holds;
}

bool faster(const char* name, const Run& ours, const Run& peer, double bound) {
    const double gigabytes = static_cast<double>(kSize) / 1e9;
    const double ratio = peer.seconds / ours.seconds;
    return line(name, gigabytes / ours.seconds, gigabytes / peer.seconds, "GB/s", ratio, bound,
                ratio >= bound);
}

void makeFile(const std::string& path) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    std::string block(kMebibyte, '\0');
    for (std::size_t at = 0; at < block.size(); ++at)
        block[at] = static_cast<char>(at * 2654435761U >> 13);
    for (off_t written = 0; written < kSize; written += kMebibyte) {
        if (write(file, block.data(), block.size()) != kMebibyte) {
            std::fprintf(stderr, "download: no room for the served file\n");
            std::exit(1);
        }
    }
    close(file);
}

}

int main(int count, char** arguments) {
    if (count == 4 && std::strcmp(arguments[1], "--fetch") == 0)
        return fetch(arguments[2], arguments[3], false);
    if (count == 4 && std::strcmp(arguments[1], "--fetch-measuring-turns") == 0)
        return fetch(arguments[2], arguments[3], true);

    const fs::path self = fs::read_symlink("/proc/self/exe");
    // On the build's disk: a memory file system would flatter everyone.
    std::string pattern = (self.parent_path() / "download-XXXXXX").string();
    const std::string root = mkdtemp(pattern.data());
    const std::string served = "/dev/shm/vistrel-bench-" + std::to_string(getpid());
    makeFile(served);
    bool holds = true;
    {
        const bench::FileServer server(served);
        const std::string url = server.url();
        const std::string ourFile = root + kFolder + "/big.mp4";
        const std::string peerFile = root + "/peer";
        const std::vector<std::string> ourCommand{self.string(), "--fetch", url, root};
        Run ours;
        Run curl;
        Run wget;
        Run aria;
        bench::Turns wgetTurns;
        for (int round = 0; round < kRounds; ++round) {
            ours = best(ours, run(ourCommand, ourFile, kSize));
            curl = best(curl, run({"curl", "-s", "-o", peerFile, url}, peerFile, kSize));
            const Run fetched = run({"wget", "-q", "-O", peerFile, url}, peerFile, kSize);
            wget = best(wget, fetched);
            wgetTurns.add(fetched.seconds);
            aria = best(
                aria, run({"aria2c", "-q", "--file-allocation=none", "-d", root, "-o", "peer", url},
                          peerFile, kSize));
        }
        const Run turns =
            run({self.string(), "--fetch-measuring-turns", url, root}, ourFile, kSize);
        const Run small =
            run({self.string(), "--fetch", url + "?mb=64", root}, ourFile, 64 * kMebibyte);
        holds &= faster("download/throughput-curl", ours, curl, 1.0);
        holds &= faster("download/throughput-wget", ours, wget, 2.5);
        holds &= faster("download/throughput-aria2c", ours, aria, 1.0);
        std::printf("spread of wget: %.0f %%\n", wgetTurns.spread());
        holds &= line("download/cpu-curl", ours.cpu, curl.cpu, "s", curl.cpu / ours.cpu, 1.0,
                      ours.cpu <= curl.cpu);
        const double growth =
            static_cast<double>(ours.peakKiB) / static_cast<double>(small.peakKiB);
        holds &= line(
            "download/peak-memory-1024-against-64-MiB", static_cast<double>(ours.peakKiB) / 1024,
            static_cast<double>(small.peakKiB) / 1024, "MiB", growth, 1.05, growth <= 1.05);
        holds &= line("download/longest-turn-of-the-loop", turns.longestTurn * 1000, 10, "ms",
                      turns.longestTurn * 100, 1.0, turns.longestTurn <= 0.010);
    }
    fs::remove(served);
    fs::remove_all(root);
    return holds ? 0 : 1;
}
