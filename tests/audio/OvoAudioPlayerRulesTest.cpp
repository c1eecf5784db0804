#include "audio/OvoAudioPlayerRules.h"

#include "audio/OvoAudioPlayerLabels.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {

using namespace OvoAudioPlayerRules;

constexpr OvoAudioPlayModes kOff{};
constexpr OvoAudioPlayModes kAll{true, false, false};
constexpr OvoAudioPlayModes kOne{false, true, false};
constexpr OvoAudioPlayModes kShuffle{false, false, true};
constexpr OvoAudioPlayModes kAllShuffled{true, false, true};
constexpr OvoAudioPlayModes kOneShuffled{false, true, true};

int timesAsked = 0;
int seven() {
    ++timesAsked;
    return 7;
}

TEST(OvoAudioPlayerRulesTest, TheNextTrackFollowsTheModesAndThePosition) {
    using Position = OvoAudioQueuePosition;
    const std::tuple<const char*, OvoAudioPlayModes, Position, bool, std::uint32_t> rows[] = {
        {"off, first of three", kOff, {0, 3}, true, 1},
        {"off, middle of three", kOff, {1, 3}, true, 2},
        {"off, last of three", kOff, {2, 3}, false, 2},
        {"off, the only one", kOff, {0, 1}, false, 0},
        {"all, first of three", kAll, {0, 3}, true, 1},
        {"all, last of three", kAll, {2, 3}, true, 0},
        {"all, the only one", kAll, {0, 1}, true, 0},
        {"one, first of three", kOne, {0, 3}, true, 0},
        {"one, last of three", kOne, {2, 3}, true, 2},
        {"one, the only one", kOne, {0, 1}, true, 0},
        {"shuffle, first of three", kShuffle, {0, 3}, true, 1},
        {"shuffle, the same again", kShuffle, {1, 3}, true, 1},
        {"shuffle, last of five", kShuffle, {4, 5}, true, 2},
        {"shuffle, the only one", kShuffle, {0, 1}, true, 0},
        {"shuffle goes before all", kAllShuffled, {2, 3}, true, 1},
        {"shuffle goes before one", kOneShuffled, {2, 3}, true, 1},
    };
    for (const auto& [name, modes, position, enabled, next] : rows) {
        SCOPED_TRACE(name);
        timesAsked = 0;
        EXPECT_EQ(isNextEnabled(position, modes), enabled);
        EXPECT_EQ(nextIndex(position, modes, seven), next);
        EXPECT_EQ(timesAsked, modes.shuffle ? 1 : 0);
    }
    EXPECT_EQ(nextIndex({0, 3}, kShuffle, [] { return -1; }), 0xFFFFFFFFU % 3) << "unsigned";
}

TEST(OvoAudioPlayerLabelsTest, TimesAreTruncatedToWholeSecondsBeforeTheyAreSubtracted) {
    const std::tuple<double, double, const char*, const char*> rows[] = {
        {0, 0, "0:00", "-0:00"},
        {75, 200, "1:15", "-2:05"},
        {75.999, 200.001, "1:15", "-2:05"},
        {0.9, 59.9, "0:00", "-0:59"},
        {59.99, 60, "0:59", "-0:01"},
        {3725, 7325, "62:05", "-60:00"},
        {200.4, 200.4, "3:20", "-0:00"},
        {201, 200.4, "3:21", "-0:00"},
        {NAN, NAN, "0:00", "-0:00"},
        {-3, 10, "0:00", "-0:10"},
    };
    for (const auto& [time, duration, elapsed, remaining] : rows) {
        EXPECT_EQ(OvoAudioPlayerLabels::elapsed(time), elapsed);
        EXPECT_EQ(OvoAudioPlayerLabels::remaining(time, duration), remaining) << time;
    }
    EXPECT_EQ(OvoAudioPlayerLabels::wholeSeconds(1e300), std::numeric_limits<int>::max());
    EXPECT_EQ(OvoAudioPlayerLabels::place({3, 12}), "4 of 12");
}

}
}
