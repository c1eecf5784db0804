#include "ads/Network/GADNetworkChecker.h"
#include "ads/Request/GADRequestPrivate.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/json/GAD_ZelJSON.h"
#include "bench/Bench.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/uikit/UIApplication.h"
#include "tests/support/DeterministicHost.h"

#include <cstdio>

namespace vistrel {
namespace {
/// With every hint set, and events counted since the last report.
std::shared_ptr<GADRequestPrivate> fullRequest() {
    auto request = std::static_pointer_cast<GADRequestPrivate>(GADRequest::request());
    request->setTestDevices(std::make_shared<GADRequest::Strings>(
        GADRequest::Strings{"0123456789abcdef0123456789abcdef01234567"}));
    request->setAdditionalParameters(std::make_shared<Value::Dictionary>(
        Value::Dictionary{{"color_bg", "AAAAFF"}, {"color_link", "000080"}, {"q", "cinema"}}));
    request->setGender(GADGender::Female);
    request->setBirthdayWithMonthDayYear(3, 7, 1981);
    request->setKeywords(std::make_shared<GADRequest::Strings>(
        GADRequest::Strings{"movies", "television", "music", "downloads"}));
    request->setLocationWithLatitudeLongitudeAccuracy(51.5F, -0.12F, 30);
    request->setCounter(12);
    return request;
}

void countSomething() {
    GADStatistics& statistics = GADStatistics::sharedStatistics();
    statistics.incrementClickCount();
    statistics.incrementPageNavigationCount();
    statistics.setBreakOutToSafari();
    for (const std::string& name : GADStatistics::allTimingNames())
        statistics.startTimingNamed(name);
}

/// Microseconds for the parameters and their text, best of several rounds.
bool measure() {
    constexpr double mostMicroseconds = 20;
    support::DeterministicHost host;
    (void)GADNetworkChecker::sharedChecker();
    host.loop.turn();
    const auto request = fullRequest();
    const GAD_ZelJSON json;
    std::size_t bytes = 0;
    auto build = [&] {
        countSomething();
        auto text = json.stringWithObject(Value(request->parameters())).text;
        bytes = text->size();
        bench::keep(text);
    };
    auto prepare = [&] {
        countSomething();
    };
    const double microseconds = bench::bestSeconds(build) * 1e6;
    const double preparation = bench::bestSeconds(prepare) * 1e6;
    GADStatistics::releaseSharedStatistics();
    GADNetworkChecker::releaseSharedChecker();
    NSUserDefaults::resetStandardUserDefaults();
    UIApplication::resetSharedApplication();
    const bool holds = microseconds < mostMicroseconds;
    std::printf("ad-request: %.2f us for %zu bytes of text, of which %.2f us to count clicks and "
                "timings, bound %.0f us %s\n",
                microseconds, bytes, preparation, mostMicroseconds, holds ? "ok" : "short");
    return holds;
}
}
}

int main() {
    return vistrel::measure() ? 0 : 1;
}
