#pragma once
#include "ads/Statistics/GADStatisticsCore.h"
#include "ads/Timing/GADTimingManager.h"
#include "platform/foundation/NSURL.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace vistrel {

/// What happened since the last ad request, to be reported by the next one. Saved in the user
/// defaults when the application ends.
class GADStatistics {
public:
    ~GADStatistics();
    GADStatistics(const GADStatistics&) = delete;
    GADStatistics& operator=(const GADStatistics&) = delete;

    /// Made on first use.
    static GADStatistics& sharedStatistics();
    static void releaseSharedStatistics();

    /// In the order in which they are reported.
    static std::span<const std::string> allTimingNames();

    std::uint32_t sessionId() const { return sessionId_; }
    void synchronize();

    /// The report. Resets values that are reported only once.
    Value::Dictionary parameters();

    /// Registers a click on the address and returns the address to open.
    NSURL urlForClick(const NSURL& url);
    /// Likewise, for a click that may have no address.
    std::optional<NSURL> urlForClick(const std::optional<NSURL>& url);
    /// Call when a click's tracking address has been fetched.
    void addClickTrackingURL(const NSURL& url);

    /// Returns the new count.
    int incrementAdRequestCount();
    int adRequestCount() const;
    void setAdRequestCount(int count);
    void incrementClickCount();
    void resetClickCount();
    void incrementPageNavigationCount();
    void resetPageNavigationCount();
    void incrementSSLPageNavigationCount();
    void resetSSLPageNavigationCount();

    void setBreakOutToSafari();
    void resetBreakOutToSafari();
    void setClickBackgroundedApp();
    void resetClickBackgroundedApp();
    void setAppOpenInterstitialNoFill();
    void resetAppOpenInterstitialNoFill();
    void setAppOpenInterstitialTimeOut();
    void resetAppOpenInterstitialTimeOut();
    void setFlagWithParameterName(const std::string& name);
    void resetFlagWithParameterName(const std::string& name);

    /// Restarts an existing timing of that name.
    void startTimingNamed(const std::string& name);
    void endTimingNamed(const std::string& name);
    void removeTimingNamed(const std::string& name);
    /// Null when there is none.
    std::shared_ptr<GADTiming> timingNamed(const std::string& name) const;
    /// Whether a click is being timed.
    bool isTimingClick() const;

private:
    GADStatistics();
    std::uint32_t takeClickLatency();
    void beginClick();
    void reportTimings(Value::Dictionary& report);
    void reportCounts(Value::Dictionary& report);
    void attachToClick(const std::string& value, const std::string& key);

    std::uint32_t sessionId_;
    GADStatisticsCore statistics_;
    GADTimingManager timingMgr_;
};

}
