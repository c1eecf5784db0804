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
    struct Row {
        const char* name;
        OvoAudioPlayModes modes;
        OvoAudioQueuePosition position;
        bool enabled;
        std::uint32_t next;
    };
    const Row rows[] = {
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
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        timesAsked = 0;
        EXPECT_EQ(isNextEnabled(row.position, row.modes), row.enabled);
        EXPECT_EQ(nextIndex(row.position, row.modes, seven), row.next);
        EXPECT_EQ(timesAsked, row.modes.shuffle ? 1 : 0);
    }
    EXPECT_EQ(nextIndex({0, 3}, kShuffle, [] { return -1; }), 0xFFFFFFFFU % 3) << "unsigned";
}

TEST(OvoAudioPlayerRulesTest, ThePreviousTrackIsTheOneBefore) {
    EXPECT_EQ(previousIndex({2, 3}), 1U);
    EXPECT_EQ(previousIndex({0, 3}), 0U);
    EXPECT_FALSE(canGoToPreviousTrack({0, 3}));
    EXPECT_TRUE(canGoToPreviousTrack({1, 3}));
}

TEST(OvoAudioPlayerRulesTest, TheEndOfATrackDependsOnThePositionOnly) {
    struct Row {
        OvoAudioQueuePosition position;
        bool interrupted;
        EndOfTrack then;
    };
    const Row rows[] = {
        {{0, 3}, false, EndOfTrack::GoToNext}, {{0, 3}, true, EndOfTrack::GoToNext},
        {{2, 3}, false, EndOfTrack::Stop},     {{2, 3}, true, EndOfTrack::PlayAgain},
        {{0, 1}, false, EndOfTrack::Stop},     {{0, 1}, true, EndOfTrack::PlayAgain},
    };
    for (const Row& row : rows)
        EXPECT_EQ(afterTrack(row.position, row.interrupted), row.then)
            << row.position.selectedIndex << " of " << row.position.count << row.interrupted;
}

TEST(OvoAudioPlayerRulesTest, RepeatGoesRoundAndLeavesShuffleAlone) {
    for (const bool shuffle : {false, true}) {
        OvoAudioPlayModes modes{false, false, shuffle};
        for (const auto& [all, one] : {std::pair(true, false), {false, true}, {false, false}}) {
            modes = withRepeatAdvanced(modes);
            EXPECT_EQ(modes, (OvoAudioPlayModes{all, one, shuffle}));
        }
    }
}

TEST(OvoAudioPlayerLabelsTest, TimesAreTruncatedToWholeSecondsBeforeTheyAreSubtracted) {
    struct Row {
        double time, duration;
        const char* elapsed;
        const char* remaining;
    };
    const Row rows[] = {
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
    for (const Row& row : rows) {
        EXPECT_EQ(OvoAudioPlayerLabels::elapsed(row.time), row.elapsed);
        EXPECT_EQ(OvoAudioPlayerLabels::remaining(row.time, row.duration), row.remaining)
            << row.time << " of " << row.duration;
    }
    EXPECT_EQ(OvoAudioPlayerLabels::wholeSeconds(1e300), std::numeric_limits<int>::max());
    EXPECT_EQ(OvoAudioPlayerLabels::place({3, 12}), "4 of 12");
}

}
}
