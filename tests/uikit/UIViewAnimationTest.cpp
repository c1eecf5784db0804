#include "platform/uikit/UIViewAnimation.h"

#include "platform/uikit/FlipDrawing.h"
#include "tests/support/Heard.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {
namespace {

struct Timing {
    double duration = 1;
    UIViewAnimationCurve curve = UIViewAnimationCurve::Linear;
};

class UIViewAnimationTest : public support::ScreenTest {
protected:
    /// Runs `changes` in a block whose end is noted under `name`.
    void animate(const std::string& name, Timing timing, const std::function<void()>& changes) {
        UIViewAnimation::beginAnimations();
        UIViewAnimation::setAnimationDuration(timing.duration);
        UIViewAnimation::setAnimationCurve(timing.curve);
        UIViewAnimation::setAnimationDidStop([this, name](bool finished) {
            ends(name + (finished ? "" : " cut"));
            if (const auto then = onEnd)
                then();
        });
        changes();
        UIViewAnimation::commitAnimations();
    }

    double shownAlpha() { return view->presentationState().alpha; }

    std::shared_ptr<UIView> view = add<UIView>(CGRectMake(0, 0, 100, 100));
    support::Heard ends;
    std::function<void()> onEnd;
};

TEST_F(UIViewAnimationTest, ValuesAreFinalAtOnceAndShownInBetween) {
    animate("move", {}, [&] {
        view->setCenter({150, 250});
        view->setAlpha(0);
        view->setBounds(CGRectMake(0, 0, 200, 100));
        view->setBackgroundColor(UIColor::redColor());
    });
    EXPECT_EQ(view->center(), (CGPoint{150, 250}));
    EXPECT_EQ(view->alpha(), 0);
    EXPECT_EQ(view->presentationState().center, (CGPoint{50, 50}));
    advance(0.25);
    EXPECT_EQ(view->presentationState(),
              (ViewState{{75, 100}, CGRectMake(0, 0, 125, 100), {}, 0.75, {1, 0, 0, 0.25}}))
        << "fades in its own hue, not out of black";
    EXPECT_EQ(ends.take(), "");
    advance(0.75);
    EXPECT_EQ(view->presentationState(),
              (ViewState{{150, 250}, CGRectMake(0, 0, 200, 100), {}, 0, UIColor::redColor()}));
    EXPECT_EQ(ends.take(), "move");
}

TEST_F(UIViewAnimationTest, CurvesRunAsTheirNamesSay) {
    // The cubic curves' values at these times, from their control points.
    const std::tuple<UIViewAnimationCurve, double, double, double> cases[] = {
        {UIViewAnimationCurve::Linear, 0.25, 0.5, 0.75},
        {UIViewAnimationCurve::EaseIn, 0.0935, 0.3153, 0.6219},
        {UIViewAnimationCurve::EaseOut, 0.3781, 0.6847, 0.9065},
        {UIViewAnimationCurve::EaseInOut, 0.1292, 0.5, 0.8708},
    };
    for (const auto& [curve, quarter, half, threeQuarters] : cases) {
        view->setAlpha(0);
        animate("curve", {1, curve}, [&] { view->setAlpha(1); });
        for (const double expected : {quarter, half, threeQuarters, 1.0}) {
            advance(0.25);
            EXPECT_NEAR(shownAlpha(), expected, 5e-4) << static_cast<int>(curve);
        }
    }
}

TEST_F(UIViewAnimationTest, ANewAnimationStartsFromWhatIsShownAndOthersGoOn) {
    animate("fade", {2}, [&] { view->setAlpha(0); });
    animate("first", {}, [&] { view->setCenter({150, 50}); });
    advance(0.5);
    animate("second", {}, [&] { view->setCenter({0, 50}); });
    EXPECT_NEAR(view->presentationState().center.x, 100, 1e-6);
    advance(0.5);
    EXPECT_NEAR(view->presentationState().center.x, 50, 1e-6);
    EXPECT_NEAR(shownAlpha(), 0.5, 1e-6);
    advance(1);
    EXPECT_EQ(ends.take(), "first cut, second, fade");
}

TEST_F(UIViewAnimationTest, AChangeOutsideABlockIsShownAtOnceAndCutsTheAnimation) {
    animate("fade", {}, [&] { view->setAlpha(0); });
    advance(0.5);
    view->setAlpha(0.8);
    EXPECT_EQ(shownAlpha(), 0.8);
    turn();
    EXPECT_EQ(ends.take(), "fade cut");
    advance(2);
    EXPECT_EQ(shownAlpha(), 0.8);
    EXPECT_EQ(ends.take(), "");
}

TEST_F(UIViewAnimationTest, RemovalEndsTheAnimationsOfAllThatLeaves) {
    auto child = std::make_shared<UIView>(CGRectMake(0, 0, 10, 10));
    view->addSubview(child);
    animate("child", {}, [&] { child->setAlpha(0); });
    advance(0.5);
    view->removeFromSuperview();
    EXPECT_EQ(ends.take(), "") << "never from inside the call";
    turn();
    EXPECT_EQ(ends.take(), "child cut");
    EXPECT_EQ(child->presentationState().alpha, 0);
    animate("destroyed", {}, [&] { child->setAlpha(1); });
    view.reset();
    child.reset();
    turn();
    EXPECT_EQ(ends.take(), "destroyed cut");
}

TEST_F(UIViewAnimationTest, ABlockThatMovesNothingEndsAtTheNextTurn) {
    animate("nothing", {}, [&] { view->setAlpha(1); });
    animate("no time", {0}, [&] { view->setAlpha(0.5); });
    EXPECT_EQ(ends.take(), "");
    EXPECT_EQ(shownAlpha(), 0.5);
    turn();
    EXPECT_EQ(ends.take(), "nothing, no time");
}

TEST_F(UIViewAnimationTest, NestedBlocksKeepTheirTimesAndWithoutAnimationJumps) {
    const auto other = add<UIView>(CGRectMake(0, 0, 10, 10));
    animate("outer", {2}, [&] {
        view->setAlpha(0);
        animate("inner", {1}, [&] { other->setAlpha(0); });
        UIViewAnimation::withoutAnimation([&] { view->setCenter({9, 9}); });
    });
    EXPECT_EQ(view->presentationState().center, (CGPoint{9, 9}));
    advance(1);
    EXPECT_EQ(ends.take(), "inner");
    EXPECT_NEAR(shownAlpha(), 0.5, 1e-6);
    advance(1);
    EXPECT_EQ(ends.take(), "outer");
}

TEST_F(UIViewAnimationTest, ARotationTurnsInsteadOfShrinking) {
    animate("turn", {}, [&] { view->setTransform(CGAffineTransformMakeRotation(3 * M_PI / 4)); });
    advance(0.5);
    const auto shown = view->presentationState().transform;
    const auto expected = CGAffineTransformMakeRotation(3 * M_PI / 8);
    EXPECT_NEAR(shown.a, expected.a, 1e-6);
    EXPECT_NEAR(shown.b, expected.b, 1e-6);
}

TEST_F(UIViewAnimationTest, AnAnimationMayBeginWhereAnotherEnds) {
    onEnd = [&] {
        onEnd = nullptr;
        animate("back", {}, [&] { view->setAlpha(1); });
    };
    animate("there", {}, [&] { view->setAlpha(0); });
    advance(1.5);
    EXPECT_NEAR(shownAlpha(), 0.5, 1e-6);
    advance(0.5);
    EXPECT_EQ(ends.take(), "there, back");
}

TEST_F(UIViewAnimationTest, FramesAreRequestedOnlyWhileSomethingVisibleChanges) {
    framesComposedIn(0.5);
    EXPECT_EQ(framesComposedIn(5), 0) << "idle";
    animate("fade", {}, [&] { view->setAlpha(0.5); });
    EXPECT_NEAR(framesComposedIn(1), 60, 3);
    framesComposedIn(0.1);
    EXPECT_EQ(framesComposedIn(5), 0) << "idle again";
    view->setHidden(true);
    framesComposedIn(0.1);
    animate("unseen", {}, [&] { view->setAlpha(1); });
    EXPECT_EQ(framesComposedIn(2), 0) << "nobody sees it move";
    EXPECT_EQ(ends.take(), "fade, unseen");
    view->setHidden(false);
    framesComposedIn(0.1);
    view->setFrame(view->frame());
    view->setAlpha(1);
    view->setTransform({});
    EXPECT_FALSE(display().frameIsAskedFor()) << "nothing changed";
    view->setAlpha(0.9);
    EXPECT_TRUE(display().frameIsAskedFor());
}

class FlipTest : public UIViewAnimationTest {
protected:
    FlipTest() {
        front->setBackgroundColor(UIColor::redColor());
        back->setBackgroundColor({0, 0, 1, 1});
        view->addSubview(front);
        framesComposedIn(0.1);
    }
    void flip(const std::string& name, UIView& flipped, UIViewAnimationTransition transition,
              const std::function<void()>& changes) {
        animate(name, {1}, [&] {
            UIViewAnimation::setAnimationTransitionForView(transition, flipped, true);
            changes();
        });
    }
    void showBack() {
        front->removeFromSuperview();
        view->addSubview(back);
    }
    std::shared_ptr<UIView> front = std::make_shared<UIView>(CGRectMake(0, 0, 100, 100));
    std::shared_ptr<UIView> back = std::make_shared<UIView>(CGRectMake(0, 0, 100, 100));
};

TEST_F(FlipTest, TheOldContentTurnsAwayAndTheNewAppearsInEitherDirection) {
    const auto other = add<UIView>(CGRectMake(200, 300, 100, 100));
    other->setBackgroundColor(UIColor::redColor());
    flip("one", *view, UIViewAnimationTransition::FlipFromLeft, [&] { showBack(); });
    flip("two", *other, UIViewAnimationTransition::FlipFromRight, [&] {
        UIViewAnimation::withoutAnimation([&] { other->setBackgroundColor({0, 0, 1, 1}); });
    });
    const auto expectBoth = [&](std::uint32_t channel) {
        auto picture = screenshot();
        for (const auto pixel : {picture->pixel(50, 50), picture->pixel(250, 350)}) {
            EXPECT_NE(pixel & channel, 0U);
            EXPECT_EQ(pixel & ~channel, 0xFF000000);
        }
        return picture;
    };
    EXPECT_EQ(colors(screen(), "50,50"), "red") << "nothing jumps at the start";
    advance(0.25);
    const auto early = expectBoth(0x00FF0000); // the old sides, shaded
    EXPECT_EQ(early->pixel(3, 50), 0xFF000000) << "narrower than the view";
    const auto heightAt = [&](int x) {
        int height = 0;
        for (int y = 0; y < early->height(); ++y)
            height += (early->pixel(x, y) & 0x00FF0000) != 0 ? 1 : 0;
        return height;
    };
    EXPECT_GT(heightAt(25), heightAt(75)) << "the left edge is nearer";
    EXPECT_LT(heightAt(225), heightAt(275)) << "the right edge is nearer";
    advance(0.5);
    expectBoth(0x000000FF);
    advance(0.25);
    EXPECT_EQ(colors(screen(), "3,50"), "blue");
    EXPECT_EQ(ends.take(), "one, two");
}

TEST_F(FlipTest, APictureTurnsByWholePixelsSmoothlyAndDarkens) {
    Bitmap picture(40, 20);
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 40; ++x)
            picture.row(y)[x] = x < 20 ? 0xFFFF0000 : 0xFF0000FF;
    }
    constexpr int headroom = 3;
    std::shared_ptr<Bitmap> straight;
    turnPicture(picture, 0, straight);
    ASSERT_EQ(straight->height(), 20 + 2 * headroom);
    for (int y = 0; y < 20; ++y)
        EXPECT_TRUE(std::equal(picture.row(y), picture.row(y) + 40, straight->row(y + headroom)));
    EXPECT_EQ(straight->pixel(20, headroom - 1), 0U);
    auto turned = straight;
    const auto generation = turned->generation();
    turnPicture(picture, M_PI / 3, turned);
    EXPECT_EQ(turned, straight) << "the memory is used again";
    EXPECT_GT(turned->generation(), generation);
    EXPECT_EQ(turned->pixel(2, 13), 0U) << "half as wide";
    EXPECT_NEAR(static_cast<int>(turned->pixel(15, 13) >> 16 & 0xFF), 255 * 0.654, 2);
    EXPECT_NEAR(static_cast<int>(turned->pixel(24, 13) & 0xFF), 255 * 0.654, 2);
    EXPECT_EQ(turned->pixel(24, 13) >> 24, 0xFFU);
}

}
}
