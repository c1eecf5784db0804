#pragma once
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Testing.h"

#include <cstdio>
#include <filesystem>
#include <unistd.h>

namespace vistrel {

/// 0 for a process that has ended.
inline int parentOf(int process) {
    const std::string status = support::contentsOf("/proc/" + std::to_string(process) + "/stat");
    char state = 'Z';
    int parent = 0;
    // The name before may contain blanks and brackets.
    std::sscanf(status.c_str() + status.rfind(')') + 1, " %c %d", &state, &parent);
    return state == 'Z' ? 0 : parent;
}

/// The running processes below this one that have that name (its first fifteen characters).
inline std::vector<int> descendantsNamed(const std::string& name) {
    std::vector<int> found;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const int process = std::atoi(entry.path().filename().c_str());
        if (process == 0 || support::contentsOf(entry.path() / "comm") != name + "\n")
            continue;
        int above = parentOf(process);
        while (above > 1 && above != getpid())
            above = parentOf(above);
        if (above == getpid())
            found.push_back(process);
    }
    return found;
}

inline int countOfEntries(const char* folder) {
    return static_cast<int>(std::distance(std::filesystem::directory_iterator(folder), {}));
}
/// Open file descriptors and threads of this process.
inline int openDescriptors() {
    return countOfEntries("/proc/self/fd");
}
inline int runningThreads() {
    return countOfEntries("/proc/self/task");
}

/// Memory of this process that is in use.
inline double residentMegabytes() {
    long total = 0;
    long pages = 0;
    std::ifstream("/proc/self/statm") >> total >> pages;
    return static_cast<double>(pages * sysconf(_SC_PAGESIZE)) / (1024 * 1024);
}

}
