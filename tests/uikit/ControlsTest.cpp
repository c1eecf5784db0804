#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIActivityIndicatorView.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UIProgressHUD.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {
namespace {

constexpr std::uint32_t kOpaqueRed = 0xFFFF0000;
constexpr std::uint32_t kOpaqueGreen = 0xFF00FF00;

std::uint32_t alpha(std::uint32_t pixel) {
    return pixel >> 24;
}

bool isPainted(std::uint32_t pixel) {
    return alpha(pixel) > 100;
}

using Controls = support::ScreenTest;

TEST_F(Controls, AButtonSendsWhatTheFingerDid) {
    const auto button = add<UIButton>(CGRectMake(40, 40, 100, 44));
    std::string heard;
    for (const auto& [name, event] : {std::pair{"down ", UIControlEventTouchDown},
                                      {"inside ", UIControlEventTouchUpInside},
                                      {"outside ", UIControlEventTouchUpOutside},
                                      {"cancel ", UIControlEventTouchCancel}})
        button->addTarget([&heard, name = name] { heard += name; }, event);
    const auto state = [&] {
        return std::exchange(heard, {}) + (button->isHighlighted() ? "lit" : "");
    };
    expectSteps({{"down 60,60", "down lit"},
                 {"move 60,115; up 60,115", "inside "},
                 {"down 60,60; move 300,400; up 300,400", "down outside "},
                 {"down 300,400; move 60,60; up 60,60", ""}},
                state);
    button->setEnabled(false);
    expectSteps({{"tap 60,60", ""}}, state);
}

TEST_F(Controls, AnActionMayDisableOrRemoveItsButton) {
    auto button = add<UIButton>(CGRectMake(40, 40, 100, 44));
    const std::weak_ptr<UIButton> weak = button;
    int presses = 0;
    button->addTarget([weak] { weak.lock()->setEnabled(false); }, UIControlEventTouchUpInside);
    button->addTarget([&] { ++presses; }, UIControlEventTouchUpInside);
    act("tap 60,60; tap 60,60");
    EXPECT_EQ(presses, 1);
    button->setEnabled(true);
    button->addTarget([weak] { weak.lock()->removeFromSuperview(); }, UIControlEventTouchUpInside);
    button.reset();
    act("tap 60,60");
    EXPECT_EQ(presses, 2);
    EXPECT_TRUE(weak.expired());
}

TEST_F(Controls, APressedPictureIsDarkerAndADisabledOneFainter) {
    const std::tuple<bool, bool, std::uint32_t> cases[] = {
        {true, false, 0xFF8C0000}, {false, false, kOpaqueRed}, {true, true, kOpaqueGreen}};
    for (const auto set : {&UIButton::setImageForState, &UIButton::setBackgroundImageForState}) {
        for (const auto& [adjusts, hasPressedPicture, pressed] : cases) {
            UIButton button(CGRectMake(0, 0, 20, 20));
            (button.*set)(plainImage(20, 20, kOpaqueRed), UIControlState::Normal);
            if (hasPressedPicture)
                (button.*set)(plainImage(20, 20, kOpaqueGreen), UIControlState::Highlighted);
            button.setAdjustsImageWhenHighlighted(adjusts);
            EXPECT_EQ(pixelOf(button, 10, 10), kOpaqueRed);
            button.setHighlighted(true);
            EXPECT_EQ(pixelOf(button, 10, 10), pressed);
            button.setHighlighted(false);
            EXPECT_EQ(pixelOf(button, 10, 10), kOpaqueRed);
            button.setEnabled(false);
            EXPECT_NEAR(alpha(pixelOf(button, 10, 10)), 0.45 * 255, 3);
        }
    }
}

TEST_F(Controls, APictureIsCentredABackgroundStretchedAndAPressGlowsWhenAsked) {
    UIButton button(CGRectMake(0, 0, 60, 40));
    button.setImageForState(plainImage(20, 10, kOpaqueGreen), UIControlState::Normal);
    button.setShowsTouchWhenHighlighted(true);
    button.setHighlighted(true);
    EXPECT_GT(alpha(pixelOf(button, 15, 20)), 60U);
    button.setHighlighted(false);
    EXPECT_EQ(pixelOf(button, 15, 20), 0U);
    button.setBackgroundImageForState(plainImage(4, 4, kOpaqueRed), UIControlState::Normal);
    EXPECT_EQ(colors(button, "1,1 58,38 19,20 30,20 40,20 30,14"), "red red red green red red");
}

TEST_F(Controls, ATitleFollowsTheState) {
    UIButton button(CGRectMake(0, 0, 100, 40));
    button.setTitleForState("Download", UIControlState::Normal);
    button.setTitleForState("Wait", UIControlState::Disabled);
    EXPECT_EQ(button.accessibilityElement().label, "Download");
    button.setHighlighted(true);
    EXPECT_EQ(button.currentTitle(), "Download");
    button.setEnabled(false);
    EXPECT_EQ(button.titleLabel().text(), "Wait");
    EXPECT_FALSE(button.accessibilityElement().enabled);
    button.setEnabled(true);
    EXPECT_EQ(button.titleLabel().text(), "Download");
}

TEST_F(Controls, ALabelPlacesItsTextAndAShadowUnderIt) {
    using enum UITextAlignment;
    UILabel label(CGRectMake(0, 0, 300, 60));
    label.setTextColor(UIColor::whiteColor());
    label.setText("MMM");
    const auto dark = [](std::uint32_t pixel) {
        return isPainted(pixel) && (pixel & 0xFF) < 60;
    };
    for (const auto alignment : {Left, Center, Right}) {
        label.setTextAlignment(alignment);
        for (const auto& [side, x] : {std::pair{Left, 0}, {Center, 120}, {Right, 240}})
            EXPECT_EQ(anyPixel(label, CGRectMake(x, 20, 60, 20), isPainted), side == alignment);
        EXPECT_FALSE(anyPixel(label, CGRectMake(0, 0, 300, 15), isPainted));
        EXPECT_FALSE(anyPixel(label, CGRectMake(0, 45, 300, 15), isPainted));
    }
    EXPECT_FALSE(anyPixel(label, label.bounds(), dark));
    label.setShadowColor(UIColor::blackColor());
    label.setShadowOffset({3, 3});
    EXPECT_TRUE(anyPixel(label, label.bounds(), dark));
}

TEST_F(Controls, ALongTextIsCutShrunkOrBroken) {
    UILabel label(CGRectMake(0, 0, 150, 30));
    label.setText("http://media.example.com/a/very/long/address/to/a/file.mp4?last=yes]");
    ASSERT_GT(label.sizeThatFits({}).width, 300);
    EXPECT_TRUE(anyPixel(label, CGRectMake(0, 7, 150, 4), isPainted)) << "cut, at full size";
    label.setAdjustsFontSizeToFitWidth(true);
    EXPECT_FALSE(anyPixel(label, CGRectMake(0, 7, 150, 4), isPainted)) << "shrunk";
    label.setText("one two three four five six seven eight nine ten");
    const double line = label.sizeThatFits({}).height;
    label.setNumberOfLines(0);
    EXPECT_GE(label.sizeThatFits({80, 0}).height, 4 * (line - 2));
    label.setNumberOfLines(2);
    EXPECT_LE(label.sizeThatFits({80, 0}).height, 2 * line + 1);
}

TEST_F(Controls, ASpinnerTurnsOnlyWhileItIsOnTheScreen) {
    const auto spinner =
        std::make_shared<UIActivityIndicatorView>(UIActivityIndicatorViewStyle::White);
    EXPECT_TRUE(spinner->isHidden());
    spinner->startAnimating();
    const auto turnsIn = [&](double seconds) {
        int turns = 0;
        auto last = pixelOf(*spinner, 10, 2);
        for (double t = 0; t < seconds; t += 1.0 / 60) {
            advance(1.0 / 60);
            const auto shown = pixelOf(*spinner, 10, 2);
            turns += std::exchange(last, shown) != shown;
        }
        return turns;
    };
    EXPECT_EQ(turnsIn(1), 0) << "not in a window";
    window().addSubview(spinner);
    EXPECT_NEAR(turnsIn(1), 12, 1);
    spinner->removeFromSuperview();
    EXPECT_EQ(turnsIn(1), 0);
    spinner->stopAnimating();
    EXPECT_TRUE(spinner->isHidden());
}

TEST_F(Controls, AnImageViewShowsItsPictureOverItsBounds) {
    const auto view = UIImageView::withImage(plainImage(30, 10, kOpaqueRed));
    EXPECT_EQ(view->frame(), CGRectMake(0, 0, 30, 10));
    view->setFrame(CGRectMake(0, 0, 60, 40));
    EXPECT_EQ(colors(*view, "59,39"), "red");
    view->setImage(plainImage(1, 1, kOpaqueGreen));
    EXPECT_EQ(colors(*view, "59,39"), "green");
    view->setImage(nullptr);
    EXPECT_EQ(colors(*view, "59,39"), "clear");
}

TEST_F(Controls, TheProgressPanelCoversItsViewUntilItIsRemoved) {
    const auto below = add<UIButton>(CGRectMake(0, 20, 320, 460));
    int presses = 0;
    below->addTarget([&] { ++presses; }, UIControlEventTouchDown);
    const auto hud = UIProgressHUD::withWindow(window());
    hud->setText("Importing");
    hud->show(true);
    hud->show(true);
    act("wait 1; tap 100,400");
    EXPECT_EQ(presses, 0);
    EXPECT_NE(find(UIAccessibilityRole::Label, "Importing"), nullptr);
    hud->show(false);
    act("wait 1; tap 100,400");
    EXPECT_EQ(hud->superview(), nullptr);
    EXPECT_EQ(presses, 1);
}

}
}
