#pragma once
#include <chrono>
#include <string>
#include <vector>

namespace vistrel::demo {
struct Request;

/// What was asked of the ad server, in order, each line with what it stands for.
class AdLog {
public:
    /// Requests that do not belong to an ad are left out.
    void add(const Request& request);
    std::string text() const;

private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point began_ = Clock::now();
    std::vector<std::string> lines_;
};

}
