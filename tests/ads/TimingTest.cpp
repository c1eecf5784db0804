#include "ads/Timing/GADTimingManager.h"

#include "platform/foundation/NSNotificationCenter.h"
#include "platform/foundation/NSUserDefaults.h"
#include "tests/ads/AdsTest.h"

namespace vistrel {
namespace {

using GADTimingTest = AdsTest;
using GADTimingManagerTest = AdsTest;

TEST_F(GADTimingTest, MeasuresFromStartToEnd) {
    const auto timing = GADTiming::withCategory("prl");
    const auto state = [&] {
        return timing->elapsedMillisecondsString() + (timing->isActive() ? " runs" : "");
    };
    timing->end();
    EXPECT_EQ(timing->endSeconds(), 0) << "it was not started";
    timing->start();
    advance(1.25);
    EXPECT_EQ(state(), "1250 runs");
    timing->end();
    advance(5);
    EXPECT_EQ(state(), "1250");
    timing->start();
    EXPECT_EQ(state(), "0 runs");
    timing->reset();
    EXPECT_EQ(state(), "0");
}

TEST_F(GADTimingTest, ElapsedTimeStaysInRange) {
    const auto lasting = [](double start, double end) {
        return GADTiming::withDictionaryRepresentation(
            {{"category", "x"}, {"start", start}, {"end", end}});
    };
    EXPECT_EQ(lasting(10, 1e12)->elapsedMilliseconds(), 4294967295U);
    // A start in the future, as after a restart of the device.
    EXPECT_EQ(lasting(1e9, 0)->elapsedMilliseconds(), 0U);
    EXPECT_EQ(lasting(10, 3'000'010)->elapsedMillisecondsString(), "-1294967296");
}

TEST_F(GADTimingTest, NeedsANameAndConvertsToADictionary) {
    EXPECT_EQ(GADTiming::withCategory(""), nullptr);
    EXPECT_EQ(GADTiming::withDictionaryRepresentation({{"start", 1.5}}), nullptr);
    EXPECT_EQ(GADTiming::withDictionaryRepresentation({{"category", 5}}), nullptr);
    const auto timing = GADTiming::withCategory("pcl");
    EXPECT_EQ(timing->dictionaryRepresentation(),
              (Value::Dictionary{{"category", "pcl"}, {"start", 0}, {"end", 0}}));
    timing->start();
    timing->setValueForKey("XYZ", "pai");
    timing->setValueForKey(Value(), "nothing");
    const Value::Dictionary representation{{"category", "pcl"},
                                           {"start", timing->startSeconds()},
                                           {"end", 0},
                                           {"userData", Value::Dictionary{{"pai", "XYZ"}}}};
    EXPECT_EQ(timing->dictionaryRepresentation(), representation);
    const auto copy = timing->copy();
    EXPECT_EQ(copy->dictionaryRepresentation(), representation);
    copy->removeValueForKey("pai");
    EXPECT_NE(timing->valueForKey("pai"), nullptr);
    EXPECT_THAT(timing->description(),
                ::testing::MatchesRegex("GADTiming \\(0x[0-9a-f]+\\): \\{.*"));
}

TEST_F(GADTimingManagerTest, KeepsOneTimingPerName) {
    GADTimingManager manager("test");
    const auto first = manager.addTimingWithCategory("a");
    const auto other = manager.addTimingWithCategory("b");
    const auto second = manager.addTimingWithCategory("a");
    manager.addTiming(nullptr);
    EXPECT_EQ(manager.addTimingWithCategory(""), nullptr);
    EXPECT_NE(first, second);
    EXPECT_EQ(manager.timingForCategory("a"), second);
    EXPECT_THAT(manager.categories(), UnorderedElementsAre("a", "b"));
    manager.removeTiming(*other);
    EXPECT_THAT(manager.categories(), ElementsAre("a"));
    manager.addTimingWithCategory("c");
    const std::vector<std::string> names{"a", "missing"};
    manager.removeTimingsForCategories(names);
    EXPECT_THAT(manager.categories(), ElementsAre("c"));
    manager.removeAllTimings();
    EXPECT_TRUE(manager.timings().empty());
}

TEST_F(GADTimingManagerTest, TimingsSurviveTerminationAndDestruction) {
    for (const bool told : {false, true}) {
        auto manager = std::make_optional<GADTimingManager>("test");
        const auto timing = manager->addTimingWithCategory("ptime");
        timing->start();
        timing->setValueForKey(5, "n");
        if (told)
            NSNotificationCenter::defaultCenter().postNotification(
                "UIApplicationWillTerminateNotification");
        else
            manager.reset();
        NSUserDefaults::resetStandardUserDefaults();
        const GADTimingManager next("test");
        const auto kept = next.timingForCategory("ptime");
        ASSERT_NE(kept, nullptr);
        EXPECT_EQ(kept->dictionaryRepresentation(), timing->dictionaryRepresentation());
        EXPECT_TRUE(GADTimingManager("other").timings().empty());
        advance(1);
    }
}

TEST_F(GADTimingManagerTest, InvalidStoredTimingsAreIgnored) {
    NSUserDefaults::standardUserDefaults().setObjectForKey(
        Value::Dictionary{{"a", "text"},
                          {"b", Value::Dictionary{{"start", 1}}},
                          {"c", Value::Dictionary{{"category", "c"}, {"userData", 5}}}},
        "gad_timing_test");
    const GADTimingManager manager("test");
    EXPECT_THAT(manager.categories(), ElementsAre("c"));
    EXPECT_TRUE(manager.timingForCategory("c")->keysAndValues().empty());
    NSUserDefaults::standardUserDefaults().setObjectForKey("no dictionary", "gad_timing_other");
    EXPECT_TRUE(GADTimingManager("other").timings().empty());
}

}
}
