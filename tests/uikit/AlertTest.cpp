#include "platform/uikit/UIActionSheet.h"
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UIApplication.h"
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
        if (onChoice)
            onChoice(index);
    }
    void actionSheetClickedButtonAtIndex(UIActionSheet& sheet, int index) override {
        choices.push_back(sheet.title() + ":" + std::to_string(index));
    }

    Choices choices;
    std::function<void(int)> onChoice;
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
    CGRect place(const std::string& button) {
        const auto view = find(UIAccessibilityRole::Button, button);
        return view ? view->convertRectToView(view->bounds(), nullptr) : CGRect{};
    }

    std::shared_ptr<Chooser> chooser_ = std::make_shared<Chooser>();
};

TEST_F(Alert, OnlyTheFirstTapCounts) {
    const auto alert = show("Delete?", {"Yes"});
    const auto button = find(UIAccessibilityRole::Button, "Yes");
    ASSERT_NE(button, nullptr);
    const CGRect yes = place("Yes");
    const CGRect cancel = place("Cancel");
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
    tapButton("Cancel");
    advance(1);
    EXPECT_TRUE(alert.expired());
    EXPECT_EQ(screen().subviews().size(), 2u) << "window and status bar";
}

TEST_F(Alert, ADelegateThatHasGoneIsNotAsked) {
    show("Orphan", {"Yes"});
    UIActionSheet::withTitle("Orphan", chooser_, "", "", {"Only"})->showInView(window());
    advance(1);
    chooser_.reset();
    tapButton("Only");
    advance(1);
    EXPECT_EQ(UIActionSheet::visibleSheet(), nullptr);
    tapButton("Yes");
    advance(1);
    EXPECT_THAT(visibleTitles(), IsEmpty());
}

TEST_F(Alert, TheUpperAlertHidesTheLowerOneUntilItIsAnswered) {
    show("Lower", {"Low"});
    show("Upper", {"Up"});
    EXPECT_THAT(visibleTitles(), ElementsAre("Lower", "Upper"));
    EXPECT_EQ(find(UIAccessibilityRole::Button, "Low"), nullptr);
    tapButton("Up");
    advance(1);
    tapButton("Low");
    advance(1);
    EXPECT_THAT(chooser_->choices, ElementsAre("Upper:1", "Lower:1"));
    EXPECT_THAT(visibleTitles(), IsEmpty());
}

TEST_F(Alert, AChoiceMayShowTheNextAlertAtOnce) {
    auto next = make("Next", {"Third"});
    chooser_->onChoice = [&](int index) {
        if (index == 1)
            std::exchange(next, nullptr)->show();
    };
    show("First", {"Second"});
    tapButton("Second");
    advance(1);
    EXPECT_THAT(visibleTitles(), ElementsAre("Next"));
    chooser_->onChoice = nullptr;
    tapButton("Third");
    advance(1);
    EXPECT_THAT(chooser_->choices, ElementsAre("First:1", "Next:1"));
}

TEST_F(Alert, TheKeyboardAnswers) {
    struct Case {
        std::vector<std::string> others;
        std::vector<UIKeyCode> keys;
        int choice;
    };
    const Case cases[] = {
        {{}, {UIKeyCode::Enter}, 0},
        {{}, {UIKeyCode::Escape}, 0},
        {{"Yes"}, {UIKeyCode::Enter}, 1},
        {{"Yes"}, {UIKeyCode::Escape}, 0},
        {{"Yes"}, {UIKeyCode::Right, UIKeyCode::Enter}, 0},
        {{"One", "Two"}, {UIKeyCode::Tab, UIKeyCode::Enter}, 2},
        {{"One", "Two"}, {UIKeyCode::Left, UIKeyCode::Left, UIKeyCode::Enter}, 2},
    };
    for (const Case& test : cases) {
        chooser_->choices.clear();
        show("Keys", test.others);
        for (const UIKeyCode key : test.keys)
            press(key);
        advance(1);
        EXPECT_THAT(chooser_->choices, ElementsAre("Keys:" + std::to_string(test.choice)));
    }
}

TEST_F(Alert, NothingBelowGetsTouchesOrKeys) {
    int presses = 0;
    const auto below = std::make_shared<UIButton>(CGRectMake(0, 0, 320, 480));
    below->addTarget([&] { ++presses; }, UIControlEventTouchDown | UIControlEventTouchUpInside);
    window().addSubview(below);
    UIApplication::sharedApplication().events().setFirstResponder(below);
    show("Above");
    tap(CGPoint{5, 475});
    press(UIKeyCode::Space);
    EXPECT_EQ(presses, 0);
    press(UIKeyCode::Escape);
    advance(1);
    EXPECT_EQ(UIApplication::sharedApplication().events().firstResponder(), below);
    press(UIKeyCode::Space);
    EXPECT_EQ(presses, 1);
}

TEST_F(Alert, AFingerThatIsDownLosesWhatItTouches) {
    unsigned heard = 0;
    const auto below = std::make_shared<UIButton>(CGRectMake(0, 20, 320, 100));
    for (const unsigned event : {UIControlEventTouchUpInside, UIControlEventTouchCancel})
        below->addTarget([&heard, event] { heard |= event; }, event);
    window().addSubview(below);
    touchDown({50, 50});
    ASSERT_TRUE(below->isHighlighted());
    make("Now")->show();
    EXPECT_FALSE(below->isHighlighted());
    touchUp({50, 50});
    EXPECT_EQ(heard, static_cast<unsigned>(UIControlEventTouchCancel));
    press(UIKeyCode::Escape);
    advance(1);
}

TEST_F(Alert, ButtonsStandSideBySideOrInRows) {
    struct Case {
        std::vector<std::string> others;
        int rows;
        std::vector<std::string> topToBottom; ///< a comma: side by side
    };
    const Case cases[] = {
        {{}, 0, {"Cancel"}},
        {{"A"}, 0, {"Cancel,A"}},
        {{"A"}, 2, {"A", "Cancel"}},
        {{"A", "B"}, 0, {"A", "B", "Cancel"}},
        {{"A", "B"}, 3, {"A", "B", "Cancel"}},
        {{"A", "B", "C"}, 2, {"Cancel,A", "B,C"}},
    };
    for (const Case& test : cases) {
        const auto alert = make("Layout", test.others);
        alert->setNumberOfRows(test.rows);
        alert->show();
        advance(1);
        double last = 0;
        for (const std::string& row : test.topToBottom) {
            const auto comma = row.find(',');
            const CGRect first = place(row.substr(0, comma));
            EXPECT_GT(first.minY(), last) << row;
            if (comma != std::string::npos) {
                const CGRect second = place(row.substr(comma + 1));
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
    const CGRect button = place("More");
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
    struct Case {
        std::string cancel;
        std::string destructive;
        std::vector<std::string> buttons;
        int tapped;
    };
    const Case cases[] = {
        {"Cancel", "", {"How To Use", "FAQ", "Support", "Cancel"}, 3},
        {"Cancel", "Delete", {"Delete", "How To Use", "FAQ", "Support", "Cancel"}, 0},
        {"", "", {"How To Use", "FAQ", "Support"}, 2},
    };
    for (const Case& test : cases) {
        chooser_->choices.clear();
        const auto sheet = UIActionSheet::withTitle("S", chooser_, test.cancel, test.destructive,
                                                    {"How To Use", "FAQ", "Support"});
        sheet->setActionSheetStyle(UIActionSheetStyle::BlackTranslucent);
        sheet->showInView(window());
        advance(1);
        EXPECT_EQ(labels(UIAccessibilityRole::Button, screen()), test.buttons);
        EXPECT_EQ(UIActionSheet::visibleSheet(), sheet);
        tapButton(test.buttons[static_cast<std::size_t>(test.tapped)]);
        advance(1);
        EXPECT_THAT(chooser_->choices, ElementsAre("S:" + std::to_string(test.tapped)));
        EXPECT_EQ(UIActionSheet::visibleSheet(), nullptr);
    }
}

TEST_F(Alert, ASheetWithoutCancelIgnoresEscape) {
    const auto sheet = UIActionSheet::withTitle("S", chooser_, "", "", {"Only"});
    sheet->showInView(window());
    press(UIKeyCode::Escape);
    EXPECT_TRUE(sheet->isVisible());
    press(UIKeyCode::Enter);
    EXPECT_TRUE(sheet->isVisible()) << "Enter without a choice does nothing";
    press(UIKeyCode::Down);
    press(UIKeyCode::Enter);
    advance(1);
    EXPECT_THAT(chooser_->choices, ElementsAre("S:0"));
}

TEST_F(Alert, AClosedSheetTellsNobody) {
    const auto sheet = UIActionSheet::withTitle("S", chooser_, "Cancel", "", {"Only"});
    sheet->showInView(window());
    advance(1);
    sheet->dismissWithClickedButtonIndex(0, true);
    tap(CGPoint{160, 400});
    advance(1);
    EXPECT_THAT(chooser_->choices, IsEmpty());
    EXPECT_EQ(screen().subviews().size(), 2u);
}

}
}
