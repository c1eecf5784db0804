#pragma once
#include "ads/Timing/GADTiming.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vistrel {

/// Named timings that survive restarts of the application. Stored in the user defaults on request,
/// when the application terminates and on destruction.
class GADTimingManager {
public:
    explicit GADTimingManager(std::string identifier);
    ~GADTimingManager();
    GADTimingManager(const GADTimingManager&) = delete;
    GADTimingManager& operator=(const GADTimingManager&) = delete;

    /// Replaces a timing of the same name; null is ignored.
    void addTiming(std::shared_ptr<GADTiming> timing);
    /// The new timing; null without a name.
    std::shared_ptr<GADTiming> addTimingWithCategory(const std::string& category);
    /// Null when there is none.
    std::shared_ptr<GADTiming> timingForCategory(std::string_view category) const;
    void removeTiming(const GADTiming& timing);
    void removeTimingForCategory(std::string_view category);
    void removeTimingsForCategories(std::span<const std::string> categories);
    void removeAllTimings();

    std::vector<std::string> categories() const;
    const std::vector<std::shared_ptr<GADTiming>>& timings() const { return timings_; }

    void synchronize();
    std::string userDefaultsKey() const;

private:
    void load();

    std::string identifier_;
    std::vector<std::shared_ptr<GADTiming>> timings_;
};

}
