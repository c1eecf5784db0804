#include "platform/uikit/UIActionSheet.h"
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIScrollIndicator.h"
#include "platform/uikit/UIScrollView.h"
#include "tests/support/Heard.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {
namespace {

struct Chooser : UIAlertViewDelegate, UIActionSheetDelegate {
    void alertViewClickedButtonAtIndex(UIAlertView& alert, int index) override {
        heard(alert.title() + ":" + std::to_string(index));
    }
    void actionSheetClickedButtonAtIndex(UIActionSheet& sheet, int index) override {
        heard(sheet.title() + ":" + std::to_string(index));
    }

    support::Heard heard; ///< "Delete?:1"
};

class Alert : public support::ScreenTest {
protected:
    std::shared_ptr<UIAlertView> show(const std::string& title,
                                      std::vector<std::string> others = {},
                                      const std::string& message = "Message", int rows = 0) {
        auto alert = UIAlertView::withTitle(title, message, chooser_, "Cancel", std::move(others));
        alert->setNumberOfRows(rows);
        alert->show();
        advance(1);
        return alert;
    }
    void answer(const std::string& button) { act("button " + button + "; wait 1"); }
    std::shared_ptr<UIActionSheet> showSheet(const std::string& cancel,
                                             const std::string& destructive,
                                             const std::vector<std::string>& others) {
        auto sheet = UIActionSheet::withTitle("S", chooser_, cancel, destructive, others);
        sheet->showInView(window());
        advance(1);
        return sheet;
    }
    std::string choices() { return chooser_->heard.take(); }

    std::shared_ptr<Chooser> chooser_ = std::make_shared<Chooser>();
};

TEST_F(Alert, OnlyTheFirstTapCounts) {
    const auto alert = show("Delete?", {"Yes"});
    const auto yes = find(UIAccessibilityRole::Button, "Yes");
    const auto cancel = find(UIAccessibilityRole::Button, "Cancel");
    ASSERT_TRUE(yes && cancel);
    tap(*yes);
    EXPECT_FALSE(alert->isVisible());
    tap(*cancel);
    tap(*yes);
    yes->accessibilityActivate();
    advance(1);
    EXPECT_EQ(choices(), "Delete?:1");
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
    showSheet("", "", {"Only"});
    chooser_.reset();
    answer("Only");
    EXPECT_EQ(UIActionSheet::visibleSheet(), nullptr);
    answer("Yes");
    EXPECT_EQ(alertCount(), 0);
}

TEST_F(Alert, TheUpperAlertHidesTheLowerOneUntilItIsAnswered) {
    show("Lower", {"Low"});
    show("Upper", {"Up"});
    EXPECT_EQ(alertCount(), 2);
    EXPECT_EQ(find(UIAccessibilityRole::Button, "Low"), nullptr);
    answer("Up");
    answer("Low");
    EXPECT_EQ(choices(), "Upper:1, Lower:1");
    EXPECT_EQ(alertCount(), 0);
}

TEST_F(Alert, TheKeyboardAnswers) {
    const std::tuple<std::vector<std::string>, std::string, std::string> cases[] = {
        {{}, "key Enter", "Keys:0"},
        {{}, "key Escape", "Keys:0"},
        {{"Yes"}, "key Enter", "Keys:1"},
        {{"Yes"}, "key Escape", "Keys:0"},
        {{"Yes"}, "key Right; key Enter", "Keys:0"},
        {{"One", "Two"}, "key Tab; key Enter", "Keys:2"},
        {{"One", "Two"}, "key Up; key Enter", "Keys:0"},
        {{"One", "Two"}, "key Left 2; key Enter", "Keys:2"},
    };
    for (const auto& [others, keys, choice] : cases) {
        show("Keys", others);
        act(keys + "; wait 1");
        EXPECT_EQ(choices(), choice) << keys;
    }
}

TEST_F(Alert, NothingBelowGetsTouchesOrKeysAndAFingerThatIsDownIsCancelled) {
    unsigned heard = 0;
    const auto below = add<UIButton>(CGRectMake(0, 0, 320, 480));
    for (const unsigned event :
         {UIControlEventTouchDown, UIControlEventTouchUpInside, UIControlEventTouchCancel})
        below->addTarget([&heard, event] { heard |= event; }, event);
    application().events().setFirstResponder(below);
    touchDown({50, 50});
    ASSERT_TRUE(below->isHighlighted());
    show("Above");
    EXPECT_FALSE(below->isHighlighted());
    touchUp({50, 50});
    EXPECT_EQ(heard, UIControlEventTouchDown | UIControlEventTouchCancel);
    heard = 0;
    act("tap 5,475; key Space");
    EXPECT_EQ(heard, 0U);
    act("key Escape; wait 1");
    EXPECT_EQ(application().events().firstResponder(), below);
    act("key Space");
    EXPECT_NE(heard, 0U);
}

TEST_F(Alert, ButtonsAreSideBySideOrInRows) {
    using Titles = std::vector<std::string>;
    const std::tuple<Titles, int, Titles> cases[] = {
        // a comma: side by side
        {{}, 0, {"Cancel"}},
        {{"A"}, 0, {"Cancel,A"}},
        {{"A"}, 2, {"A", "Cancel"}},
        {{"A", "B"}, 0, {"A", "B", "Cancel"}},
        {{"A", "B"}, 3, {"A", "B", "Cancel"}},
        {{"A", "B", "C"}, 2, {"Cancel,A", "B,C"}},
    };
    for (const auto& [others, rows, topToBottom] : cases) {
        show("Layout", others, "Message", rows);
        double last = 0;
        for (const std::string& row : topToBottom) {
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
        act("key Escape; wait 1");
    }
}

TEST_F(Alert, TextThatDoesNotFitScrollsAndTheButtonsStayOnTheScreen) {
    std::string text;
    for (int line = 0; line < 60; ++line)
        text += "A line of questions and answers\n\n";
    show("FAQ", {"More"}, text);
    const CGRect button = placeOfButton("More");
    EXPECT_LT(button.maxY(), 480);
    const auto box = find(UIAccessibilityRole::Alert, "FAQ\n" + text);
    ASSERT_NE(box, nullptr);
    EXPECT_GE(box->convertRectToView(box->bounds(), nullptr).minY(), 20);
    const auto scroll = findBelow<UIScrollView>(*box);
    ASSERT_NE(scroll, nullptr);
    EXPECT_GT(scroll->contentSize().height, scroll->bounds().size.height);
    const auto indicator = findBelow<UIScrollIndicator>(*scroll);
    ASSERT_NE(indicator, nullptr) << "it flashes when the text appears";
    EXPECT_EQ(indicator->alpha(), 0) << "and fades by itself";
    act("key Down; wait 1");
    EXPECT_GT(scroll->contentOffset().y, 0);
    act("key Escape; wait 1");
}

TEST_F(Alert, ASheetOffersItsButtonsInOrderWithCancelLast) {
    const std::tuple<std::string, std::string, std::vector<std::string>, int> cases[] = {
        {"Cancel", "", {"How To Use", "FAQ", "Support", "Cancel"}, 3},
        {"Cancel", "Delete", {"Delete", "How To Use", "FAQ", "Support", "Cancel"}, 0},
        {"", "", {"How To Use", "FAQ", "Support"}, 2},
    };
    for (const auto& [cancel, destructive, buttons, tapped] : cases) {
        const auto sheet = showSheet(cancel, destructive, {"How To Use", "FAQ", "Support"});
        EXPECT_EQ(labels(UIAccessibilityRole::Button, screen()), buttons);
        EXPECT_EQ(UIActionSheet::visibleSheet(), sheet);
        answer(buttons[static_cast<std::size_t>(tapped)]);
        EXPECT_EQ(choices(), "S:" + std::to_string(tapped));
        EXPECT_EQ(UIActionSheet::visibleSheet(), nullptr);
    }
}

TEST_F(Alert, ASheetWithoutCancelIgnoresEscapeAndADismissedOneIsSilent) {
    auto sheet = showSheet("", "", {"Only"});
    act("key Escape; key Enter");
    EXPECT_TRUE(sheet->isVisible()) << "Enter without a choice does nothing";
    act("key Down; key Enter; wait 1");
    EXPECT_EQ(choices(), "S:0");
    showSheet("Cancel", "", {"Only"})->dismissWithClickedButtonIndex(0, true);
    act("tap 160,400; wait 1");
    EXPECT_EQ(choices(), "");
    EXPECT_EQ(screen().subviews().size(), 2u);
}

}
}
