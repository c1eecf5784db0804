#include "platform/uikit/UIScrollView.h"

#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIScrollIndicator.h"
#include "platform/uikit/UIScrollMotion.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {
namespace {

/// A page of 320 x 2000 in a window of 320 x 400.
class UIScrollViewTest : public support::ScreenTest {
protected:
    UIScrollViewTest() { view->setContentSize({320, 2000}); }

    double y() const { return view->contentOffset().y; }
    /// "40 dragged", "0".
    void expectSteps(const std::vector<Step>& steps) {
        ScreenTest::expectSteps(steps, [this] {
            std::ostringstream text;
            text << y() + 0.0 << (view->isDragging() ? " dragged" : "")
                 << (view->isDecelerating() ? " moving" : "");
            return text.str();
        });
    }

    std::shared_ptr<UIScrollView> view = add<UIScrollView>(CGRectMake(0, 0, 320, 400));
};

TEST_F(UIScrollViewTest, FollowsATouchAfterTenPoints) {
    expectSteps({{"down 100,300; move 100,291", "0"},
                 {"move 100,290", "0 dragged"}, // the content does not jump
                 {"move 100,250", "40 dragged"},
                 {"wait 0.5; up 100,250", "40"},
                 {"down 100,300; move 100,280; move 100,265.3", "55 dragged"}, // a whole pixel
                 {"up 100,265.3; wait 1", "55"}});
}

TEST_F(UIScrollViewTest, AFlickCoastsAndRequestsFramesOnlyUntilItRests) {
    drag({100, 200}, {100, 140}, 0.06);
    EXPECT_TRUE(view->isDecelerating());
    const double released = y();
    advance(5);
    EXPECT_FALSE(view->isDecelerating());
    EXPECT_GT(y(), released + 100);
    const int frames = display().frames();
    EXPECT_GT(frames, 30);
    advance(60);
    EXPECT_LE(display().frames(), frames + 1) << "a list at rest draws nothing";
}

TEST_F(UIScrollViewTest, APullPastTheTopSpringsBackAlsoWhenItIsCancelled) {
    for (const bool cancelled : {false, true}) {
        act("down 100,100; move 100,120; move 100,300");
        EXPECT_LT(y(), -30);
        advance(0.5);
        if (cancelled)
            application().events().cancelTouch();
        else
            touchUp({100, 300});
        expectSteps({{"wait 2", "0"}});
    }
}

TEST_F(UIScrollViewTest, ShortContentMovesOnlyWhereItAlwaysBounces) {
    view->setContentSize({320, 300});
    expectSteps({{"drag 100,200 100,100 0.3", "0"}});
    view->setAlwaysBounceVertical(true);
    act("drag 100,200 100,100 0.3");
    EXPECT_GT(y(), 10);
    expectSteps({{"wait 2", "0"}});
}

TEST_F(UIScrollViewTest, AWheelScrollsWithinTheRange) {
    expectSteps({{"wheel 100,100 50; wait 0.02; wheel 100,100 50; wait 1", "100"},
                 {"wheel 100,100 3", "103"}, // a touchpad's step moves at once
                 {"wheel 100,100 5000; wait 1", "1600"},
                 {"wheel 100,100 -5000; wait 1", "0"}});
    EXPECT_FALSE(view->scrollBy(0, -10, loop().now()));
    EXPECT_FALSE(view->scrollBy(10, 0, loop().now()));
}

TEST_F(UIScrollViewTest, ScrollsNoFurtherThanARectangleNeeds) {
    const std::tuple<double, CGRect, double> cases[] = {
        {100, CGRectMake(0, 150, 10, 40), 100},  {100, CGRectMake(0, 60, 10, 40), 60},
        {100, CGRectMake(0, 480, 10, 40), 120},  {0, CGRectMake(0, 1990, 10, 500), 1600},
        {100, CGRectMake(0, 300, 10, 900), 300},
    };
    for (const auto& [offset, rect, expected] : cases) {
        view->setContentOffset({0, offset});
        view->scrollRectToVisible(rect, false);
        EXPECT_EQ(y(), expected);
    }
    view->setContentOffset({0, 0});
    view->scrollRectToVisible(CGRectMake(0, 900, 10, 40), true);
    EXPECT_EQ(y(), 0);
    advance(0.15);
    EXPECT_GT(y(), 0);
    EXPECT_LT(y(), 540);
    advance(1);
    EXPECT_EQ(y(), 540);
}

TEST_F(UIScrollViewTest, TheInsetExtendsTheRange) {
    view->setContentInset({44, 0, 37, 0});
    EXPECT_EQ(y(), -44);
    view->scrollRectToVisible(CGRectMake(0, 1990, 10, 10), false);
    EXPECT_EQ(y(), 1600);
    expectSteps({{"key End; wait 1", "1637"}});
    view->setContentInset({});
    EXPECT_EQ(y(), 1600);
    view->setFrame(CGRectMake(0, 0, 320, 500));
    EXPECT_EQ(y(), 1500);
}

TEST_F(UIScrollViewTest, TheIndicatorShowsWhileItMovesAndFadesAfterwards) {
    act("down 100,300; move 100,280; move 100,200");
    const auto indicator = view->subviews().back();
    EXPECT_EQ(indicator->alpha(), 1);
    const CGRect bar = indicator->frame();
    EXPECT_EQ(bar.maxX(), 318);
    EXPECT_EQ(bar.minY(), 80 + 2 + 16) << "in the content's coordinates";
    EXPECT_EQ(bar.size.height, 79);
    act("wait 0.5; up 100,200");
    EXPECT_EQ(indicator->alpha(), 1);
    advance(1);
    EXPECT_EQ(indicator->alpha(), 0);
}

using Phase = UIScrollMotion::Phase;

UIScrollMotion aList(double offset = 0) {
    UIScrollMotion motion;
    motion.setRange({0, 1000, 400});
    motion.setOffset(offset);
    return motion;
}

/// A finger that goes `distance` points in `seconds`, sampled as a screen does, and lets go.
double dragFinger(UIScrollMotion& motion, double distance, double seconds) {
    constexpr int kSteps = 10;
    motion.beginDrag(300, 0);
    for (int step = 1; step <= kSteps; ++step)
        motion.dragTo(300 + distance * step / kSteps, seconds * step / kSteps);
    motion.endDrag(seconds);
    return seconds;
}

void letRest(UIScrollMotion& motion, double from) {
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
        dragFinger(motion, distance, seconds);
        EXPECT_EQ(motion.phase(), afterwards);
        letRest(motion, seconds);
        EXPECT_EQ(motion.phase(), Phase::Rest);
        EXPECT_NEAR(motion.offset(), rest, 2);
        EXPECT_EQ(motion.offset(), std::round(motion.offset())) << "rests between pixels";
    }
}

TEST(UIScrollMotionTest, ThePathDoesNotDependOnTheFrameRate) {
    std::vector<double> places;
    for (const double frame : {1.0 / 30, 1.0 / 60, 1.0 / 240}) {
        auto motion = aList(850);
        double now = dragFinger(motion, -150, 0.1);
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
    double now = dragFinger(motion, -150, 0.1);
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
