#include "platform/uikit/UIScrollView.h"

#include "platform/uikit/UIEventDispatcher.h"
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

}
}
