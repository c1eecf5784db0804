#include "platform/linux/files/RecentListing.h"

#include "platform/linux/files/DirectoryListing.h"

#include <ctime>

namespace vistrel {

namespace {
/// Shorter lists are read in one call, and are not worth the memory.
constexpr std::size_t kLongList = 1000;

double secondsOf(const timespec& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

bool areEqual(const timespec& a, const timespec& b) {
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

double now() {
    timespec time{};
    ::clock_gettime(CLOCK_REALTIME, &time);
    return secondsOf(time);
}
}

bool RecentListing::isTheSame(const struct stat& attributes) const {
    return !names_.empty() && attributes.st_dev == folder_.st_dev &&
           attributes.st_ino == folder_.st_ino && areEqual(attributes.st_mtim, folder_.st_mtim) &&
           areEqual(attributes.st_ctim, folder_.st_ctim);
}

bool RecentListing::remembers(int folder) const {
    struct stat attributes {};
    return ::fstat(folder, &attributes) == 0 && isTheSame(attributes);
}

host::Result<std::vector<std::string>> RecentListing::namesIn(int folder) {
    // Asked before reading: what changes meanwhile shows the next time.
    struct stat attributes {};
    const double time = now();
    if (::fstat(folder, &attributes) != 0)
        return namesInDirectory(folder);
    if (isTheSame(attributes))
        return names_;
    auto names = namesInDirectory(folder);
    if (names && names.value().size() >= kLongList &&
        time - secondsOf(attributes.st_ctim) > settling_) {
        folder_ = attributes;
        names_ = names.value();
    }
    return names;
}

}
