#include "ads/Delegate/GADLandingPageTiming.h"

#include "ads/Statistics/GADStatistics.h"

namespace vistrel::GADLandingPageTiming {

void loadStarted() {
    GADStatistics& statistics = GADStatistics::sharedStatistics();
    if (!statistics.timingNamed("plpl"))
        statistics.startTimingNamed("plpl");
}

void loadEnded() {
    GADStatistics& statistics = GADStatistics::sharedStatistics();
    if (statistics.timingNamed("plpd"))
        return;
    statistics.endTimingNamed("plpl");
    statistics.startTimingNamed("plpd");
}

}
