#include "ads/Timing/GADTimingManager.h"

#include "platform/foundation/NSNotificationCenter.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/foundation/UIApplicationNotifications.h"

#include <utility>

namespace vistrel {

GADTimingManager::GADTimingManager(std::string identifier)
    : identifier_(std::move(identifier)) {
    load();
    NSNotificationCenter::defaultCenter().addObserver(
        this, UIApplicationWillTerminateNotification, nullptr,
        [this](const NSNotification&) { synchronize(); });
}

GADTimingManager::~GADTimingManager() {
    NSNotificationCenter::defaultCenter().removeObserver(this);
    synchronize();
}

void GADTimingManager::load() {
    const Value stored = NSUserDefaults::standardUserDefaults().objectForKey(userDefaultsKey());
    for (const auto& [name, representation] : stored.dictionary())
        addTiming(GADTiming::withDictionaryRepresentation(representation.dictionary()));
}

void GADTimingManager::addTiming(std::shared_ptr<GADTiming> timing) {
    if (!timing)
        return;
    for (auto& existing : timings_) {
        if (existing->category() != timing->category())
            continue;
        existing = std::move(timing);
        return;
    }
    timings_.push_back(std::move(timing));
}

std::shared_ptr<GADTiming> GADTimingManager::addTimingWithCategory(const std::string& category) {
    auto timing = GADTiming::withCategory(category);
    addTiming(timing);
    return timing;
}

std::shared_ptr<GADTiming> GADTimingManager::timingForCategory(std::string_view category) const {
    for (const auto& timing : timings_)
        if (timing->category() == category)
            return timing;
    return nullptr;
}

void GADTimingManager::removeTiming(const GADTiming& timing) {
    // Keeps the name alive while it is compared with every timing's.
    const auto held = timingForCategory(timing.category());
    removeTimingForCategory(timing.category());
}

void GADTimingManager::removeTimingForCategory(std::string_view category) {
    std::erase_if(
        timings_, [&](const auto& timing) { return timing->category() == category; });
}

void GADTimingManager::removeTimingsForCategories(std::span<const std::string> categories) {
    for (const std::string& category : categories)
        removeTimingForCategory(category);
}

void GADTimingManager::removeAllTimings() {
    timings_.clear();
}

std::vector<std::string> GADTimingManager::categories() const {
    std::vector<std::string> names;
    names.reserve(timings_.size());
    for (const auto& timing : timings_)
        names.push_back(timing->category());
    return names;
}

void GADTimingManager::synchronize() {
    Value::Dictionary representations;
    for (const auto& timing : timings_)
        representations.set(timing->category(), timing->dictionaryRepresentation());
    NSUserDefaults& defaults = NSUserDefaults::standardUserDefaults();
    defaults.setObjectForKey(std::move(representations), userDefaultsKey());
    (void)defaults.synchronize();
}

std::string GADTimingManager::userDefaultsKey() const {
    return "gad_timing_" + identifier_;
}

}
