#include "platform/uikit/UISlider.h"

#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIProgressView.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {
namespace {

/// 220 points for a thumb of 20: its middle goes from 10 to 210.
class UISliderTest : public support::ScreenTest {
protected:
    UISliderTest() {
        slider->setThumbImage(plainImage(20, 20, 0xff0000ff));
        slider->setMinimumTrackImage(plainImage(4, 9, 0xffff0000));
        slider->setMaximumTrackImage(plainImage(4, 9, 0xff00ff00));
        slider->addTarget([this] { ++changes; }, UIControlEventValueChanged);
    }

    std::shared_ptr<UISlider> slider = add<UISlider>(CGRectMake(0, 100, 220, 9));
    int changes = 0;
};

TEST_F(UISliderTest, ValuesAreClampedAndPlaceTheThumb) {
    slider->setMaximumValue(200);
    const std::tuple<float, float, double> cases[] = {
        {100, 100, 110}, {-5, 0, 10}, {1e9F, 200, 210}, {NAN, 0, 10}, {50, 50, 60}};
    for (const auto& [set, value, middle] : cases) {
        slider->setValue(set);
        EXPECT_EQ(slider->value(), value);
        EXPECT_EQ(slider->thumbRect().midX(), middle) << set;
    }
    slider->setMaximumValue(25);
    EXPECT_EQ(slider->value(), 25) << "a smaller range pulls the value in";
    EXPECT_EQ(changes, 0) << "no event for what the program sets";
}

TEST_F(UISliderTest, TracksMeetUnderTheThumbWhichMayBeTallerThanTheSlider) {
    slider->setValue(0.5F);
    // The last two are above the frame of the slider.
    EXPECT_EQ(colors(screen(), "20,104 110,104 200,104 110,96 20,98"), "red blue green blue black");
}

TEST_F(UISliderTest, AMoveOfLessThanAPixelComposesNothing) {
    const auto bar = add<UIProgressView>(CGRectMake(0, 50, 202, 9));
    slider->setMaximumValue(1000);
    slider->setValue(500);
    bar->setProgress(0.5F);
    advance(1);
    const auto framesFor = [&](auto change) {
        change();
        return framesComposedIn(1);
    };
    EXPECT_EQ(framesFor([&] { slider->setValue(501); }), 0);
    EXPECT_EQ(framesFor([&] { slider->setValue(506); }), 1);
    EXPECT_EQ(framesFor([&] { bar->setProgress(0.501F); }), 0);
    EXPECT_EQ(framesFor([&] { bar->setProgress(0.51F); }), 1);
}

TEST_F(UISliderTest, AFingerDragsOnlyTheThumb) {
    expectSteps({{"down 150,104; move 180,104", "0%"},       // beside the thumb
                 {"up 180,104; down 14,110", "0% tracking"}, // beside its middle
                 {"move 114,200; move 114,210", "50% tracking, 1 change"},
                 {"move 900,104", "100% tracking, 1 change"},
                 {"up 900,104", "100%"}},
                [this] {
                    const int heard = std::exchange(changes, 0);
                    return slider->accessibilityElement().value +
                           (slider->isTracking() ? " tracking" : "") +
                           (heard ? ", " + std::to_string(heard) + " change" : "");
                });
}

TEST_F(UISliderTest, ArrowsMoveItAndAScreenReaderReadsIt) {
    slider->setMaximumValue(200);
    application().events().setFirstResponder(slider);
    EXPECT_TRUE(press(UIKeyCode::Right));
    EXPECT_EQ(slider->value(), 10);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(slider->accessibilityElement().role, UIAccessibilityRole::Slider);
    EXPECT_EQ(slider->accessibilityElement().value, "5%");
}

using UIProgressViewTest = support::ScreenTest;

TEST_F(UIProgressViewTest, ClampsAndFillsThatMuch) {
    auto bar = std::make_shared<UIProgressView>(CGRectMake(0, 0, 202, 9));
    const std::pair<float, float> cases[] = {{0.25F, 0.25F}, {1.5F, 1},     {-1, 0},
                                             {NAN, 0},       {INFINITY, 1}, {0.5F, 0.5F}};
    for (const auto& [set, progress] : cases) {
        bar->setProgress(set);
        EXPECT_EQ(bar->progress(), progress);
    }
    const auto isFilledIn = [&](const CGRect& part) {
        return anyPixel(*bar, part, [](std::uint32_t pixel) {
            return (pixel & 0xff) > ((pixel >> 16) & 0xff) + 60;
        });
    };
    EXPECT_TRUE(isFilledIn(CGRectMake(96, 4, 4, 1)));
    EXPECT_FALSE(isFilledIn(CGRectMake(102, 4, 98, 1)));
    bar->setProgress(0);
    EXPECT_FALSE(isFilledIn(bar->bounds()));
    bar->setProgress(1);
    EXPECT_TRUE(isFilledIn(CGRectMake(195, 4, 4, 1)));
    EXPECT_EQ(bar->accessibilityElement().value, "100%");
}

}
}
