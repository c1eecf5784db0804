#include "ads/Statistics/GADStatistics.h"

#include "ads/Utility/GADSignalGathering.h"
#include "platform/foundation/NSUserDefaults.h"
#include "tests/ads/AdsTest.h"

namespace vistrel {
namespace {

NSURL address(std::string_view text) {
    return *NSURL::URLWithString(text);
}

class GADStatisticsTest : public AdsTest {
protected:
    static GADStatistics& statistics() { return GADStatistics::sharedStatistics(); }

    /// The report in order as one line, without the session.
    static std::string report() {
        std::string line;
        for (const auto& [key, value] : statistics().parameters()) {
            if (key == "session_id")
                continue;
            line += (line.empty() ? "" : " ") + std::string(key) + "=";
            line += value.isNumber() ? value.numberText() : "'" + std::string(value.string()) + "'";
        }
        return line;
    }
};

TEST_F(GADStatisticsTest, AnEmptyReportHoldsTheSessionAloneAndEachStartHasItsOwn) {
    const auto first = statistics().sessionId();
    EXPECT_EQ(statistics().parameters(), (Value::Dictionary{{"session_id", first}}));
    restartLibrary();
    advance(1);
    EXPECT_NE(statistics().sessionId(), first);
}

TEST_F(GADStatisticsTest, RequestCountAndTimeAreNotResetByTheReport) {
    EXPECT_EQ(statistics().incrementAdRequestCount(), 1);
    statistics().startTimingNamed("ptime");
    advance(2);
    EXPECT_EQ(report(), "ptime='2000' preqs=1");
    advance(1);
    EXPECT_EQ(statistics().incrementAdRequestCount(), 2);
    EXPECT_EQ(report(), "ptime='3000' preqs=2");
    statistics().setAdRequestCount(0);
    EXPECT_EQ(statistics().adRequestCount(), 0);
    EXPECT_EQ(report(), "ptime='3000'");
}

TEST_F(GADStatisticsTest, CountsAndFlagsAreReportedOnceInOrder) {
    statistics().incrementClickCount();
    statistics().incrementSSLPageNavigationCount();
    statistics().incrementPageNavigationCount();
    statistics().incrementPageNavigationCount();
    statistics().setClickBackgroundedApp();
    statistics().setAppOpenInterstitialNoFill();
    statistics().setAppOpenInterstitialTimeOut();
    statistics().setBreakOutToSafari();
    EXPECT_EQ(report(), "pcbo=1 aoi_timedout=1 aoi_nofill=1 pclb=1 plpnc=2 plpsnc=1 pcc=1");
    EXPECT_EQ(report(), "");
    statistics().setBreakOutToSafari();
    statistics().resetBreakOutToSafari();
    statistics().setFlagWithParameterName("aoi_nofill");
    statistics().resetAppOpenInterstitialNoFill();
    EXPECT_EQ(report(), "") << "flags that were taken back";
}

TEST_F(GADStatisticsTest, TimingsAreReportedOnceInOrder) {
    for (const std::string& name : GADStatistics::allTimingNames())
        statistics().startTimingNamed(name);
    advance(0.5);
    statistics().endTimingNamed("prl");
    statistics().endTimingNamed("nothing");
    advance(0.5);
    EXPECT_EQ(report(), "prl='500' pcl='1000' pai='1000' ppcl='1000' pcrl='1000' plpl='1000' "
                        "plpd='1000' ptime='1000'");
    EXPECT_EQ(report(), "ptime='1000'");
}

TEST_F(GADStatisticsTest, TimeToTheClickNeedsAClick) {
    statistics().startTimingNamed("ppcl");
    EXPECT_EQ(report(), "");
    statistics().startTimingNamed("ppcl");
    advance(3);
    (void)statistics().urlForClick(address("http://h/"));
    EXPECT_TRUE(statistics().isTimingClick());
    advance(1.5);
    statistics().endTimingNamed("pcl");
    EXPECT_FALSE(statistics().isTimingClick());
    EXPECT_EQ(report(), "pcl='1500' ppcl='3000' pcrl='0' pcc=1");
}

TEST_F(GADStatisticsTest, AClickThatPutTheApplicationToSleepIsMeasuredByTheCalendar) {
    (void)statistics().urlForClick(address("http://h/"));
    application().setState(UIApplicationState::Background);
    // While the device sleeps, its stopwatch stops and its calendar does not.
    loop().setWallClockAtStart(1'300'000'000 + 3600);
    advance(2);
    EXPECT_EQ(report(), "pcl=3602000 pcrl='0' pclb=1 pcc=1");
    EXPECT_EQ(report(), "");
}

class Signals : public GADSignalGathering {
public:
    std::optional<std::string> clickSignals(const std::string& adIdentifier) override {
        return adIdentifier == "none" ? std::nullopt : std::optional("sig-" + adIdentifier);
    }
};

TEST_F(GADStatisticsTest, AClickIsReportedWithItsAdAndCarriesItsSignals) {
    GADSignalGathering::setShared(std::make_shared<Signals>());
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"http://h/?ai=XYZ&other=1", "&sig-XYZ", "pcl='0' pai='XYZ' pcrl='0' pcc=1"},
        {"http://h/?ai=none", "", "pcl='0' pai='none' pcrl='0' pcc=1"},
        {"http://h/?AI=XYZ&ai=", "", "pcl='0' pcrl='0' pcc=1"},
        {"http://h/?b=7", "", "pcl='0' pcrl='0' pcc=1"},
        {"gmsg://mobileads/open?ai=1", "", ""},
        {"grokruf://launch?url=x", "", ""},
        {"about:blank", "", ""},
    };
    for (const auto& [url, appended, reported] : cases) {
        EXPECT_EQ(statistics().urlForClick(address(url)).absoluteString(), url + appended);
        EXPECT_EQ(report(), reported) << url;
    }
    EXPECT_EQ(statistics().urlForClick(std::nullopt), std::nullopt);
    EXPECT_EQ(report(), "pcl='0' pcrl='0' pcc=1") << "a click without an address counts";
}

TEST_F(GADStatisticsTest, ATrackedClickIsNamedByItsPath) {
    deterministicHost().settings["ads/click-server-domain"] = "clicks.example";
    const std::tuple<std::string_view, std::string_view> cases[] = {
        {"http://a.clicks.example/aclk/sa", "pcl='0' pit='k/sa' pcrl='0' pcc=1"},
        {"http://clicks.example/abcd", "pcl='0' pit='d' pcrl='0' pcc=1"},
        {"http://clicks.example/abc", "pcl='0' pcrl='0' pcc=1"},
        {"http://clicks.example/ab%C3%A9", "pcl='0' pcrl='0' pcc=1"},
        {"http://clicks.example.org/aclk/sa", "pcl='0' pcrl='0' pcc=1"},
    };
    for (const auto& [url, reported] : cases) {
        (void)statistics().urlForClick(address("http://h/"));
        statistics().addClickTrackingURL(address(url));
        EXPECT_EQ(report(), reported) << url;
    }
    statistics().addClickTrackingURL(address("http://clicks.example/aclk/sa"));
    EXPECT_EQ(report(), "");
}

using GADStatisticsCoreTest = AdsTest;

TEST_F(GADStatisticsTest, CountsSurviveTheEndOfTheApplication) {
    statistics().incrementAdRequestCount();
    statistics().incrementClickCount();
    statistics().startTimingNamed("ptime");
    application().terminate();
    NSUserDefaults::resetStandardUserDefaults();
    EXPECT_EQ(GADStatisticsCore("shared").addValueNumberForKey(0, "pcc"), 1);
    advance(1);
    restartLibrary();
    NSUserDefaults::resetStandardUserDefaults();
    EXPECT_EQ(report(), "ptime='1000' preqs=1 pcc=1");
}

TEST_F(GADStatisticsCoreTest, SettersTakeOnlyTheirKind) {
    using Core = GADStatisticsCore;
    const std::pair<void (Core::*)(const Value&, std::string_view), Value> setters[] = {
        {&Core::setStringForKey, "text"},
        {&Core::setNumberForKey, 5},
        {&Core::setDateForKey, Value::date(1)},
        {&Core::setArrayForKey, Value::Array{1}},
        {&Core::setDictionaryForKey, Value::Dictionary{{"a", 1}}},
    };
    for (const auto& [setter, kind] : setters) {
        Core store("kinds");
        store.removeAllObjects();
        for (const auto& [other, value] : setters) {
            (store.*setter)(value, "key");
            EXPECT_EQ(store.stringForKey("key") != nullptr, value == kind);
            store.removeObjectForKey("key");
        }
        (store.*setter)(kind, "key");
        (store.*setter)(Value(), "key");
        EXPECT_EQ(*store.numberForKey("key"), kind);
    }
}

TEST_F(GADStatisticsCoreTest, AddsToTheStoredNumber) {
    GADStatisticsCore store("sums");
    EXPECT_EQ(store.addValueNumberForKey(3, "n"), 3);
    EXPECT_EQ(store.addValueNumberForKey(-5, "n"), -2);
    store.setNumberForKey(2147483647, "n");
    EXPECT_EQ(store.addValueNumberForKey(1, "n"), 2147483647);
    store.setStringForKey("text", "t");
    EXPECT_EQ(store.addValueNumberForKey(1, "t"), 1);
}

TEST_F(GADStatisticsCoreTest, IsStoredUnderItsOwnName) {
    {
        GADStatisticsCore store("GADObjectPrivate");
        store.setDateForKey(Value::date(86400), "expireDate");
        EXPECT_EQ(preferences().stored().find("gad_stats_GADObjectPrivate"), nullptr);
        store.synchronize();
        EXPECT_NE(preferences().stored().find("gad_stats_GADObjectPrivate"), nullptr);
        store.setNumberForKey(1, "late");
    }
    NSUserDefaults::resetStandardUserDefaults();
    const GADStatisticsCore store("GADObjectPrivate");
    EXPECT_EQ(store.dateForKey("expireDate")->dateValue(), 86400);
    EXPECT_NE(store.numberForKey("late"), nullptr);
    EXPECT_EQ(GADStatisticsCore("shared").dateForKey("expireDate"), nullptr);
}

}
}
