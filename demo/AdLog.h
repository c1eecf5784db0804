#pragma once
#include <chrono>
#include <string>
#include <vector>

namespace vistrel::demo {
struct Request;

/// The requests to the ad server, in order, each with its meaning.
class AdLog {
public:
    /// Ignores requests that do not belong to an ad.
    void add(const Request& request);
    std::string text() const;

private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point began_ = Clock::now();
    std::vector<std::string> lines_;
};

}
