#include "ads/Statistics/GADStatistics.h"

#include "ads/GADSettings.h"
#include "ads/Network/GADNetworkUtilities.h"
#include "ads/Notification/GADNotification.h"
#include "ads/Notification/GADNotificationCenter.h"
#include "ads/Utility/GADNumberUtilities.h"
#include "ads/Utility/GADSignalGathering.h"
#include "ads/Utility/GADTime.h"
#include "platform/foundation/NSRunLoop.h"
#include "platform/foundation/UIApplicationNotifications.h"
#include "platform/foundation/UTF8Text.h"

#include <array>
#include <cmath>
#include <random>
#include <utility>

namespace vistrel {

namespace {

std::unique_ptr<GADStatistics>& shared() {
    static auto* statistics = new std::unique_ptr<GADStatistics>; // outlives the host at exit
    return *statistics;
}

/// Uses a private generator, since seeding the process-wide one would disturb its other users.
std::uint32_t newSessionId() {
    std::minstd_rand generator(GADNumberUtilities::saturated<std::uint32_t>(gadAbsoluteTime()));
    const double drawn = generator();
    return GADNumberUtilities::saturated<std::uint32_t>((drawn - 1) / 2147483647 * 4294967295);
}

/// The text without its first characters; nothing when no character is left.
std::optional<std::string_view> withoutFirstCharacters(std::string_view text, int count) {
    for (; count > 0 && !text.empty(); --count)
        takeUTF8Character(text);
    if (text.empty())
        return std::nullopt;
    return text;
}

}

GADStatistics& GADStatistics::sharedStatistics() {
    if (!shared())
        shared().reset(new GADStatistics());
    return *shared();
}

void GADStatistics::releaseSharedStatistics() {
    shared().reset();
}

GADStatistics::GADStatistics()
    : sessionId_(newSessionId())
    , statistics_("shared")
    , timingMgr_("shared") {
    auto& center = GADNotificationCenter::defaultCenter();
    center.addObserver(
        this, UIApplicationWillTerminateNotification, nullptr,
        [this](const NSNotification&) { statistics_.synchronize(); });
    center.addObserver(this, UIApplicationDidEnterBackgroundNotification, nullptr,
                       [this](const NSNotification&) {
                           if (isTimingClick())
                               setClickBackgroundedApp();
                       });
}

GADStatistics::~GADStatistics() {
    GADNotificationCenter::defaultCenter().removeObserver(this);
}

std::span<const std::string> GADStatistics::allTimingNames() {
    static const std::array<std::string, 8> names{"prl",  "pcl",  "pai",  "ppcl",
                                                  "pcrl", "plpl", "plpd", "ptime"};
    return names;
}

void GADStatistics::synchronize() {
    statistics_.synchronize();
    timingMgr_.synchronize();
}

Value::Dictionary GADStatistics::parameters() {
    Value::Dictionary report{{"session_id", sessionId_}};
    if (!timingNamed("pcl"))
        removeTimingNamed("ppcl");
    const std::uint32_t clickLatency = takeClickLatency();
    reportTimings(report);
    if (clickLatency != 0)
        report.set("pcl", clickLatency);
    reportCounts(report);
    return report;
}

/// The stopwatch stops while the application sleeps, so a click that put it to sleep is measured by
/// the calendar.
std::uint32_t GADStatistics::takeClickLatency() {
    const auto click = timingNamed("pcl");
    if (!click)
        return 0;
    std::uint32_t latency = 0;
    const Value* date = click->valueForKey("date");
    if (date && statistics_.numberForKey("pclb"))
        latency = GADNumberUtilities::saturated<std::uint32_t>(
            std::fabs(NSRunLoop::wallClock() - date->dateValue()) * 1000);
    click->removeValueForKey("date");
    return latency;
}

void GADStatistics::reportTimings(Value::Dictionary& report) {
    for (const std::string& name : allTimingNames()) {
        const auto timing = timingNamed(name);
        if (!timing)
            continue;
        report.set(name, timing->elapsedMillisecondsString());
        for (const auto& [key, value] : timing->keysAndValues())
            report.set(key, value);
        if (name != "ptime")
            removeTimingNamed(name);
    }
}

void GADStatistics::reportCounts(Value::Dictionary& report) {
    for (const char* key :
         {"preqs", "pcbo", "aoi_timedout", "aoi_nofill", "pclb", "plpnc", "plpsnc", "pcc"}) {
        const Value* number = statistics_.numberForKey(key);
        if (number && number->integerValue() != 0)
            report.set(key, *number);
    }
    resetBreakOutToSafari();
    resetAppOpenInterstitialTimeOut();
    resetAppOpenInterstitialNoFill();
    resetClickBackgroundedApp();
    resetPageNavigationCount();
    resetSSLPageNavigationCount();
    resetClickCount();
}

NSURL GADStatistics::urlForClick(const NSURL& url) {
    if (GADNotification::isNotificationURL(url) || url.absoluteString() == "about:blank")
        return url;
    beginClick();
    const auto adIdentifier = GADNetworkUtilities::parameterValueForKeyFromURL("ai", url);
    if (adIdentifier && !adIdentifier->empty())
        attachToClick(*adIdentifier, "pai");
    NSURL target = GADSignalGathering::shared().urlWithClickSignals(url);
    endTimingNamed("pcrl");
    return target;
}

std::optional<NSURL> GADStatistics::urlForClick(const std::optional<NSURL>& url) {
    if (url)
        return urlForClick(*url);
    beginClick();
    endTimingNamed("pcrl");
    return std::nullopt;
}

void GADStatistics::beginClick() {
    incrementClickCount();
    startTimingNamed("pcl");
    startTimingNamed("pcrl");
    endTimingNamed("ppcl");
    timingNamed("pcl")->setValueForKey(Value::date(NSRunLoop::wallClock()), "date");
}

void GADStatistics::addClickTrackingURL(const NSURL& url) {
    if (!url.host().ends_with(gadSettingValue(kGADClickServerDomain)))
        return;
    constexpr int prefixLength = 4;
    const std::string path = url.path();
    if (const auto rest = withoutFirstCharacters(path, prefixLength))
        attachToClick(std::string(*rest), "pit");
}

void GADStatistics::attachToClick(const std::string& value, const std::string& key) {
    if (const auto click = timingNamed("pcl"))
        click->setValueForKey(std::string_view(value), key);
}

void GADStatistics::startTimingNamed(const std::string& name) {
    removeTimingNamed(name);
    if (const auto timing = timingMgr_.addTimingWithCategory(name))
        timing->start();
}

void GADStatistics::endTimingNamed(const std::string& name) {
    if (const auto timing = timingNamed(name))
        timing->end();
}

void GADStatistics::removeTimingNamed(const std::string& name) {
    timingMgr_.removeTimingForCategory(name);
}

std::shared_ptr<GADTiming> GADStatistics::timingNamed(const std::string& name) const {
    return timingMgr_.timingForCategory(name);
}

bool GADStatistics::isTimingClick() const {
    const auto click = timingNamed("pcl");
    return click && click->isActive();
}

}
