#include "tests/linux/web/ProcessTree.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <unistd.h>
#include <vector>

namespace vistrel {

namespace {

struct Process {
    std::string name;
    int parent = 0;
};

std::map<int, Process> processes() {
    std::map<int, Process> result;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", ignored)) {
        const std::string number = entry.path().filename();
        if (number.find_first_not_of("0123456789") != std::string::npos)
            continue;
        std::ifstream file(entry.path() / "stat");
        std::string text;
        std::getline(file, text);
        const auto open = text.find('(');
        const auto close = text.rfind(')');
        if (close == std::string::npos || text[close + 2] == 'Z')
            continue;
        result[std::stoi(number)] = {text.substr(open + 1, close - open - 1),
                                     std::stoi(text.substr(close + 4))};
    }
    return result;
}

std::vector<int> descendants(const std::string& name) {
    const auto all = processes();
    std::vector<int> found;
    for (const auto& [number, process] : all) {
        if (process.name != name)
            continue;
        int above = process.parent;
        while (above > 1 && above != getpid() && all.contains(above))
            above = all.at(above).parent;
        if (above == getpid())
            found.push_back(number);
    }
    return found;
}

}

int descendantsNamed(const std::string& name) {
    return static_cast<int>(descendants(name).size());
}

void killDescendantsNamed(const std::string& name) {
    for (const int process : descendants(name))
        ::kill(process, SIGKILL);
}

int openDescriptors() {
    return static_cast<int>(
        std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}));
}

int runningThreads() {
    return static_cast<int>(
        std::distance(std::filesystem::directory_iterator("/proc/self/task"), {}));
}

double residentBytes() {
    std::ifstream file("/proc/self/statm");
    double total = 0;
    double resident = 0;
    file >> total >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

}
