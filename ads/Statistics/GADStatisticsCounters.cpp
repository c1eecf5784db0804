#include "ads/Statistics/GADStatistics.h"

#include "ads/Utility/GADNumberUtilities.h"

namespace vistrel {

int GADStatistics::incrementAdRequestCount() {
    return statistics_.addValueNumberForKey(1, "preqs");
}

int GADStatistics::adRequestCount() const {
    const Value* count = statistics_.numberForKey("preqs");
    return count ? GADNumberUtilities::saturated<int>(count->doubleValue()) : 0;
}

void GADStatistics::setAdRequestCount(int count) {
    statistics_.setNumberForKey(count, "preqs");
}

void GADStatistics::incrementClickCount() {
    statistics_.addValueNumberForKey(1, "pcc");
}

void GADStatistics::resetClickCount() {
    statistics_.setNumberForKey(0, "pcc");
}

void GADStatistics::incrementPageNavigationCount() {
    statistics_.addValueNumberForKey(1, "plpnc");
}

void GADStatistics::resetPageNavigationCount() {
    statistics_.setNumberForKey(0, "plpnc");
}

void GADStatistics::incrementSSLPageNavigationCount() {
    statistics_.addValueNumberForKey(1, "plpsnc");
}

void GADStatistics::resetSSLPageNavigationCount() {
    statistics_.setNumberForKey(0, "plpsnc");
}

void GADStatistics::setBreakOutToSafari() {
    setFlagWithParameterName("pcbo");
}

void GADStatistics::resetBreakOutToSafari() {
    resetFlagWithParameterName("pcbo");
}

void GADStatistics::setClickBackgroundedApp() {
    setFlagWithParameterName("pclb");
}

void GADStatistics::resetClickBackgroundedApp() {
    resetFlagWithParameterName("pclb");
}

void GADStatistics::setAppOpenInterstitialNoFill() {
    setFlagWithParameterName("aoi_nofill");
}

void GADStatistics::resetAppOpenInterstitialNoFill() {
    resetFlagWithParameterName("aoi_nofill");
}

void GADStatistics::setAppOpenInterstitialTimeOut() {
    setFlagWithParameterName("aoi_timedout");
}

void GADStatistics::resetAppOpenInterstitialTimeOut() {
    resetFlagWithParameterName("aoi_timedout");
}

void GADStatistics::setFlagWithParameterName(const std::string& name) {
    statistics_.setNumberForKey(1, name);
}

void GADStatistics::resetFlagWithParameterName(const std::string& name) {
    statistics_.removeObjectForKey(name);
}

}
