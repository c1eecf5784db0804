#include "platform/uikit/UIScrollMotion.h"
#include "platform/uikit/UIScrollIndicator.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {

using Phase = UIScrollMotion::Phase;

UIScrollMotion aList(double offset = 0) {
    UIScrollMotion motion;
    motion.setRange({0, 1000, 400});
    motion.setOffset(offset);
    return motion;
}

/// A finger that goes `distance` points in `seconds`, sampled as a screen does, and lets go.
double drag(UIScrollMotion& motion, double distance, double seconds) {
    constexpr int kSteps = 10;
    motion.beginDrag(300, 0);
    for (int step = 1; step <= kSteps; ++step)
        motion.dragTo(300 + distance * step / kSteps, seconds * step / kSteps);
    motion.endDrag(seconds);
    return seconds;
}

void settle(UIScrollMotion& motion, double from) {
    for (double now = from; motion.advance(now) && now < from + 20;)
        now += 1.0 / 60;
}

TEST(UIScrollMotionTest, OutsideTheRangeTheContentResistsMoreAndMore) {
    auto motion = aList();
    motion.beginDrag(0, 0);
    double last = 0;
    double lastStep = 100;
    for (int finger = 50; finger <= 2000; finger += 50) {
        motion.dragTo(finger, finger / 1000.0);
        const double step = last - motion.offset();
        EXPECT_GT(step, 0);
        EXPECT_LT(step, lastStep);
        last = motion.offset();
        lastStep = step;
    }
    EXPECT_GT(motion.offset(), -400) << "never further than the view is long";
}

TEST(UIScrollMotionTest, ADragFromOutsideTheRangeDoesNotJump) {
    auto motion = aList();
    motion.beginDrag(0, 0);
    motion.dragTo(300, 0.5);
    const double pulled = motion.offset();
    motion.stop(0.6);
    motion.beginDrag(100, 0.6);
    EXPECT_NEAR(motion.offset(), pulled, 0.01);
    motion.dragTo(100 - 300, 0.7);
    EXPECT_NEAR(motion.offset(), 0, 0.01) << "the same way back";
}

TEST(UIScrollMotionTest, AReleaseCoastsBouncesAndRests) {
    // The offset, the finger's distance (up is negative) and its seconds; then the phase and where
    // the list comes to rest. A release at v points per second coasts about v / 2 points: friction
    // leaves 0.998 of the velocity each millisecond.
    const std::tuple<const char*, double, double, double, Phase, double> cases[] = {
        {"a slow release rests", 500, -4, 0.1, Phase::Rest, 504},
        {"up", 100, -60, 0.1, Phase::Coasting, 100 + 60 + 296},
        {"down", 600, 60, 0.1, Phase::Coasting, 600 - 60 - 296},
        {"past the end", 900, -60, 0.1, Phase::Coasting, 1000},
        {"past the start", 100, 60, 0.1, Phase::Coasting, 0},
        {"released outside", 0, 200, 1.0, Phase::Returning, 0},
    };
    for (const auto& [name, offset, distance, seconds, afterwards, rest] : cases) {
        SCOPED_TRACE(name);
        auto motion = aList(offset);
        drag(motion, distance, seconds);
        EXPECT_EQ(motion.phase(), afterwards);
        settle(motion, seconds);
        EXPECT_EQ(motion.phase(), Phase::Rest);
        EXPECT_NEAR(motion.offset(), rest, 2);
        EXPECT_EQ(motion.offset(), std::round(motion.offset())) << "rests between pixels";
    }
}

TEST(UIScrollMotionTest, ThePathDoesNotDependOnTheFrameRate) {
    std::vector<double> places;
    for (const double frame : {1.0 / 30, 1.0 / 60, 1.0 / 240}) {
        auto motion = aList(850);
        double now = drag(motion, -150, 0.1);
        for (const double until = now + 0.25; now + frame < until; now += frame)
            motion.advance(now);
        motion.advance(0.1 + 0.25);
        places.push_back(motion.offset());
    }
    EXPECT_GT(places[0], 1000) << "in the middle of the bounce";
    EXPECT_NEAR(places[0], places[1], 0.001);
    EXPECT_NEAR(places[0], places[2], 0.001);
}

TEST(UIScrollMotionTest, ABouncePassesTheEdgeOnceAndDoesNotOscillate) {
    auto motion = aList(950);
    double now = drag(motion, -150, 0.1);
    double furthest = motion.offset();
    for (; motion.advance(now) && motion.offset() >= furthest; now += 1.0 / 60)
        furthest = motion.offset();
    EXPECT_GT(furthest, 1010);
    EXPECT_LT(furthest, 1200);
    for (double last = furthest; motion.advance(now); now += 1.0 / 60) {
        EXPECT_LE(motion.offset(), last);
        EXPECT_GE(motion.offset(), 1000);
        last = motion.offset();
    }
    EXPECT_LT(now, 1.5) << "it settles within a moment";
}

TEST(UIScrollIndicatorTest, TheBarShowsTheVisiblePart) {
    using Span = std::pair<double, double>; // position and length
    const std::tuple<const char*, double, double, double, Span> cases[] = {
        // offset within minimum and maximum
        {"top", 0, 0, 400, {2, 198}},
        {"middle", 200, 0, 400, {101, 198}},
        {"bottom", 400, 0, 400, {200, 198}},
        {"very long content", 0, 0, 4000000, {2, 36}},
        {"squeezed at the top", -50, 0, 400, {2, 148}},
        {"squeezed at the bottom", 450, 0, 400, {250, 148}},
        {"squeezed to a dot", -1000, 0, 400, {2, 6}},
        {"with a top inset", -44, -44, 356, {2, 198}},
        {"all visible", 0, 0, 0, {2, 396}},
    };
    for (const auto& [name, offset, minimum, maximum, expected] : cases) {
        const auto bar = scrollIndicatorSpan(offset, minimum, maximum, 400);
        EXPECT_EQ(Span(bar.position, bar.length), expected) << name;
    }
}

}
}
