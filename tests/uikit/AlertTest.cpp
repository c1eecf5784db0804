#include "platform/uikit/UIActionSheet.h"
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIScrollIndicator.h"
#include "platform/uikit/UIScrollView.h"
#include "tests/support/ui/ScreenTest.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace vistrel {
namespace {

using Choices = std::vector<std::string>;

struct Chooser : UIAlertViewDelegate, UIActionSheetDelegate {
    void alertViewClickedButtonAtIndex(UIAlertView& alert, int index) override {
        choices.push_back(alert.title() + ":" + std::to_string(index));
    }
    void actionSheetClickedButtonAtIndex(UIActionSheet& sheet, int index) override {
        choices.push_back(sheet.title() + ":" + std::to_string(index));
    }

    Choices choices;
};

class Alert : public support::ScreenTest {
protected:
    std::shared_ptr<UIAlertView> make(const std::string& title,
                                      std::vector<std::string> others = {},
                                      const std::string& message = "Message") {
        return UIAlertView::withTitle(title, message, chooser_, "Cancel", std::move(others));
    }
    std::shared_ptr<UIAlertView> show(const std::string& title,
                                      std::vector<std::string> others = {}) {
        auto alert = make(title, std::move(others));
        alert->show();
        advance(1);
        return alert;
    }
    static std::vector<std::string> visibleTitles() {
        std::vector<std::string> titles;
        for (const auto& alert : UIAlertView::visibleAlerts())
            titles.push_back(alert->title());
        return titles;
    }
    void answer(const std::string& button) {
        tapButton(button);
        advance(1);
    }

    std::shared_ptr<Chooser> chooser_ = std::make_shared<Chooser>();
};

TEST_F(Alert, OnlyTheFirstTapCounts) {
    const auto alert = show("Delete?", {"Yes"});
    const auto button = find(UIAccessibilityRole::Button, "Yes");
    ASSERT_NE(button, nullptr);
    const CGRect yes = placeOfButton("Yes");
    const CGRect cancel = placeOfButton("Cancel");
    tap({yes.midX(), yes.midY()});
    EXPECT_FALSE(alert->isVisible());
    tap({cancel.midX(), cancel.midY()});
    tap({yes.midX(), yes.midY()});
    button->accessibilityActivate();
    advance(1);
    EXPECT_THAT(chooser_->choices, ElementsAre("Delete?:1"));
}

TEST_F(Alert, LivesUntilItIsAnsweredAndNoLonger) {
    std::weak_ptr<UIAlertView> alert = show("Kept");
    ASSERT_FALSE(alert.expired());
    answer("Cancel");
    EXPECT_TRUE(alert.expired());
    EXPECT_EQ(screen().subviews().size(), 2u) << "window and status bar";
}

TEST_F(Alert, ADelegateThatHasGoneIsNotCalled) {
    show("Orphan", {"Yes"});
    UIActionSheet::withTitle("Orphan", chooser_, "", "", {"Only"})->showInView(window());
    advance(1);
    chooser_.reset();
    answer("Only");
    EXPECT_EQ(UIActionSheet::visibleSheet(), nullptr);
    answer("Yes");
    EXPECT_THAT(visibleTitles(), IsEmpty());
}

TEST_F(Alert, TheUpperAlertHidesTheLowerOneUntilItIsAnswered) {
    show("Lower", {"Low"});
    show("Upper", {"Up"});
    EXPECT_THAT(visibleTitles(), ElementsAre("Lower", "Upper"));
    EXPECT_EQ(find(UIAccessibilityRole::Button, "Low"), nullptr);
    answer("Up");
    answer("Low");
    EXPECT_THAT(chooser_->choices, ElementsAre("Upper:1", "Lower:1"));
    EXPECT_THAT(visibleTitles(), IsEmpty());
}

TEST_F(Alert, TheKeyboardAnswers) {
    using enum UIKeyCode;
    const struct {
        std::vector<std::string> others;
        std::vector<UIKeyCode> keys;
        int choice;
    } cases[] = {
        {{}, {Enter}, 0},
        {{}, {Escape}, 0},
        {{"Yes"}, {Enter}, 1},
        {{"Yes"}, {Escape}, 0},
        {{"Yes"}, {Right, Enter}, 0},
        {{"One", "Two"}, {Tab, Enter}, 2},
        {{"One", "Two"}, {Left, Left, Enter}, 2},
    };
    for (const auto& test : cases) {
        chooser_->choices.clear();
        show("Keys", test.others);
        for (const UIKeyCode key : test.keys)
            press(key);
        advance(1);
        EXPECT_THAT(chooser_->choices, ElementsAre("Keys:" + std::to_string(test.choice)));
    }
}

TEST_F(Alert, NothingBelowGetsTouchesOrKeysAndAFingerThatIsDownIsCancelled) {
    unsigned heard = 0;
    const auto below = std::make_shared<UIButton>(CGRectMake(0, 0, 320, 480));
    for (const unsigned event :
         {UIControlEventTouchDown, UIControlEventTouchUpInside, UIControlEventTouchCancel})
        below->addTarget([&heard, event] { heard |= event; }, event);
    window().addSubview(below);
    application().events().setFirstResponder(below);
    touchDown({50, 50});
    ASSERT_TRUE(below->isHighlighted());
    show("Above");
    EXPECT_FALSE(below->isHighlighted());
    touchUp({50, 50});
    EXPECT_EQ(heard, UIControlEventTouchDown | UIControlEventTouchCancel);
    heard = 0;
    tap(CGPoint{5, 475});
    press(UIKeyCode::Space);
    EXPECT_EQ(heard, 0U);
    press(UIKeyCode::Escape);
    advance(1);
    EXPECT_EQ(application().events().firstResponder(), below);
    press(UIKeyCode::Space);
    EXPECT_NE(heard, 0U);
}

TEST_F(Alert, ButtonsAreSideBySideOrInRows) {
    const struct {
        std::vector<std::string> others;
        int rows;
        std::vector<std::string> topToBottom; ///< a comma: side by side
    } cases[] = {
        {{}, 0, {"Cancel"}},
        {{"A"}, 0, {"Cancel,A"}},
        {{"A"}, 2, {"A", "Cancel"}},
        {{"A", "B"}, 0, {"A", "B", "Cancel"}},
        {{"A", "B"}, 3, {"A", "B", "Cancel"}},
        {{"A", "B", "C"}, 2, {"Cancel,A", "B,C"}},
    };
    for (const auto& test : cases) {
        const auto alert = make("Layout", test.others);
        alert->setNumberOfRows(test.rows);
        alert->show();
        advance(1);
        double last = 0;
        for (const std::string& row : test.topToBottom) {
            const auto comma = row.find(',');
            const CGRect first = placeOfButton(row.substr(0, comma));
            EXPECT_GT(first.minY(), last) << row;
            if (comma != std::string::npos) {
                const CGRect second = placeOfButton(row.substr(comma + 1));
                EXPECT_EQ(second.minY(), first.minY()) << row;
                EXPECT_GT(second.minX(), first.maxX()) << row;
            }
            last = first.maxY() - 1;
        }
        press(UIKeyCode::Escape);
        advance(1);
    }
}

TEST_F(Alert, TextThatDoesNotFitScrollsAndTheButtonsStayOnTheScreen) {
    std::string text;
    for (int line = 0; line < 60; ++line)
        text += "A line of questions and answers\n\n";
    const auto alert = make("FAQ", {"More"}, text);
    alert->show();
    advance(1);
    const CGRect button = placeOfButton("More");
    EXPECT_LT(button.maxY(), 480);
    const auto box = find(UIAccessibilityRole::Alert, "FAQ\n" + text);
    ASSERT_NE(box, nullptr);
    EXPECT_GE(box->convertRectToView(box->bounds(), nullptr).minY(), 20);
    std::shared_ptr<UIScrollView> scroll;
    for (const auto& view : box->subviews()) {
        if (auto found = std::dynamic_pointer_cast<UIScrollView>(view))
            scroll = found;
    }
    ASSERT_NE(scroll, nullptr);
    EXPECT_GT(scroll->contentSize().height, scroll->bounds().size.height);
    const auto indicator = std::dynamic_pointer_cast<UIScrollIndicator>(scroll->subviews().back());
    ASSERT_NE(indicator, nullptr) << "it flashes when the text appears";
    EXPECT_EQ(indicator->alpha(), 0) << "and fades by itself";
    press(UIKeyCode::Down);
    advance(1);
    EXPECT_GT(scroll->contentOffset().y, 0);
    press(UIKeyCode::Escape);
    advance(1);
}

TEST_F(Alert, ASheetOffersItsButtonsInOrderWithCancelLast) {
    const struct {
        std::string cancel;
        std::string destructive;
        std::vector<std::string> buttons;
        int tapped;
    } cases[] = {
        {"Cancel", "", {"How To Use", "FAQ", "Support", "Cancel"}, 3},
        {"Cancel", "Delete", {"Delete", "How To Use", "FAQ", "Support", "Cancel"}, 0},
        {"", "", {"How To Use", "FAQ", "Support"}, 2},
    };
    for (const auto& test : cases) {
        chooser_->choices.clear();
        const auto sheet = UIActionSheet::withTitle("S", chooser_, test.cancel, test.destructive,
                                                    {"How To Use", "FAQ", "Support"});
        sheet->setActionSheetStyle(UIActionSheetStyle::BlackTranslucent);
        sheet->showInView(window());
        advance(1);
        EXPECT_EQ(labels(UIAccessibilityRole::Button, screen()), test.buttons);
        EXPECT_EQ(UIActionSheet::visibleSheet(), sheet);
        answer(test.buttons[static_cast<std::size_t>(test.tapped)]);
        EXPECT_THAT(chooser_->choices, ElementsAre("S:" + std::to_string(test.tapped)));
        EXPECT_EQ(UIActionSheet::visibleSheet(), nullptr);
    }
}

TEST_F(Alert, ASheetWithoutCancelIgnoresEscapeAndADismissedOneIsSilent) {
    auto sheet = UIActionSheet::withTitle("S", chooser_, "", "", {"Only"});
    sheet->showInView(window());
    press(UIKeyCode::Escape);
    EXPECT_TRUE(sheet->isVisible());
    press(UIKeyCode::Enter);
    EXPECT_TRUE(sheet->isVisible()) << "Enter without a choice does nothing";
    press(UIKeyCode::Down);
    press(UIKeyCode::Enter);
    advance(1);
    EXPECT_THAT(chooser_->choices, ElementsAre("S:0"));

    sheet = UIActionSheet::withTitle("S", chooser_, "Cancel", "", {"Only"});
    sheet->showInView(window());
    advance(1);
    sheet->dismissWithClickedButtonIndex(0, true);
    tap(CGPoint{160, 400});
    advance(1);
    EXPECT_EQ(chooser_->choices.size(), 1U);
    EXPECT_EQ(screen().subviews().size(), 2u);
}

}
}
