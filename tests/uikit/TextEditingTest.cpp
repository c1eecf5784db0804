#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UITextBuffer.h"
#include "platform/uikit/UITextField.h"
#include "platform/uikit/UITextLines.h"
#include "platform/uikit/UITextView.h"
#include "tests/support/ui/ScreenTest.h"

#include <gmock/gmock.h>

namespace vistrel {
namespace {

/// The text with the caret as "|" and the anchor, when it is elsewhere, as "^".
std::string picture(const UITextBuffer& buffer) {
    std::string text = buffer.text();
    const bool caretFirst = buffer.caret() == buffer.selectionStart();
    text.insert(buffer.selectionEnd(), caretFirst && buffer.hasSelection() ? "^" : "");
    if (!caretFirst)
        text.insert(buffer.selectionEnd(), "|");
    text.insert(buffer.selectionStart(), caretFirst ? "|" : "^");
    return text;
}

TEST(TextBuffer, EditsAndMovesOnlyBetweenCharacters) {
    using Buffer = UITextBuffer;
    using Step = std::function<void(Buffer&)>;
    const auto to = [](void (Buffer::*move)(Buffer::Extend), Buffer::Extend extend) {
        return Step([=](Buffer& b) { (b.*move)(extend); });
    };
    const Step left = to(&Buffer::moveBackward, Buffer::Extend::No);
    const Step right = to(&Buffer::moveForward, Buffer::Extend::No);
    const Step shiftLeft = to(&Buffer::moveBackward, Buffer::Extend::Yes);
    const Step wordLeft = to(&Buffer::moveWordBackward, Buffer::Extend::No);
    const Step wordRight = to(&Buffer::moveWordForward, Buffer::Extend::No);
    const Step backspace = &Buffer::deleteBackward;
    const Step del = &Buffer::deleteForward;
    const auto at = [](std::size_t offset) {
        return Step([=](Buffer& b) { b.moveTo(offset, Buffer::Extend::No); });
    };
    const auto type = [](const std::string& text) {
        return Step([=](Buffer& b) { b.insert(text); });
    };
    struct Case {
        std::string text;
        std::vector<Step> steps;
        std::string expected;
    };
    const std::vector<Case> cases = {
        {"", {backspace, del, left, right}, "|"},
        {"ab", {left, type("x")}, "ax|b"},
        {"Grüße", {left, left, backspace}, "Gr|ße"},
        {"日本語", {left, left}, "日|本語"},
        {"e\u0301te\u0301", {left}, "e\u0301t|e\u0301"},
        {"e\u0301te\u0301", {backspace, backspace, backspace}, "|"},
        {"a\u0300\u036F\u0370", {left, left}, "|a\u0300\u036F\u0370"},
        {"👍🏻👍🏿", {left}, "👍🏻|👍🏿"},
        {"👍🏽!", {at(0), right}, "👍🏽|!"},
        {"👍🏽!", {at(0), del}, "|!"},
        {"abcd", {left, shiftLeft, shiftLeft}, "a|bc^d"},
        {"abcd", {left, shiftLeft, shiftLeft, type("é")}, "aé|d"},
        {"abcd", {left, shiftLeft, shiftLeft, backspace}, "a|d"},
        {"abcd", {left, shiftLeft, shiftLeft, left}, "a|bcd"},
        {"abcd", {left, shiftLeft, shiftLeft, right}, "abc|d"},
        {"one  two", {wordLeft, wordLeft}, "|one  two"},
        {"one  two", {at(0), wordRight, wordRight}, "one  two|"},
        {"a", {type("b\x01\x1b\tc\nd")}, "abc\nd|"},
        {"a", {type("\xff\xc3")}, "a\uFFFD\uFFFD|"},
        {"日本", {at(4)}, "日|本"},
        {"日本", {at(99)}, "日本|"},
    };
    for (const Case& test : cases) {
        UITextBuffer buffer;
        buffer.setText(test.text);
        for (const Step& step : test.steps)
            step(buffer);
        EXPECT_EQ(picture(buffer), test.expected) << test.text;
    }
}

class TextEditing : public support::ScreenTest {
protected:
    std::shared_ptr<UITextField> makeField(double width) {
        const auto made = std::make_shared<UITextField>(CGRectMake(10, 40, width, 40));
        window().addSubview(made);
        return made;
    }
    std::shared_ptr<UITextView> makeTextView(const std::string& text) {
        const auto made = std::make_shared<UITextView>(CGRectMake(0, 20, 200, 100));
        made->setText(text);
        window().addSubview(made);
        return made;
    }
    void focus(const std::shared_ptr<UIView>& view) {
        application().events().setFirstResponder(view);
    }
    void pressTimes(int times, UIKeyCode code, bool shift = false) {
        for (int time = 0; time < times; ++time)
            press(code, shift);
    }
};

TEST_F(TextEditing, LinesBreakAtSpacesAndKeepEveryCharacter) {
    UITextLines lines(UIFont::systemFontOfSize(16));
    const std::string text = "The quick brown fox\n\njumps over a "
                             "verylongwordthatdoesnotfitononelineatall ü日本語";
    lines.breakText(text, 100);
    ASSERT_GT(lines.lines().size(), 6u);
    std::string kept;
    for (const auto& line : lines.lines()) {
        EXPECT_LE(lines.selectionRect(lines.lineOf(line.start), line.start, line.end).size.width,
                  100);
        kept += lines.textOf(line);
    }
    std::string expected = text;
    for (std::string* each : {&expected, &kept})
        std::erase_if(*each, [](char c) { return c == ' ' || c == '\n'; });
    EXPECT_EQ(kept, expected);
    for (std::size_t offset = 0; offset < 19; ++offset) {
        const CGRect caret = lines.caretRect(offset);
        EXPECT_EQ(lines.lineOf(lines.offsetAt({caret.minX(), caret.midY()})), lines.lineOf(offset));
    }
}

TEST_F(TextEditing, AFieldInsertsWhatIsTypedAtTheCaret) {
    const auto field = makeField(200);
    int edits = 0;
    int ends = 0;
    field->addTarget([&] { ++edits; }, UIControlEventEditingChanged);
    field->addTarget([&] { ++ends; }, UIControlEventEditingDidEndOnExit);
    EXPECT_FALSE(type("x")) << "not focused";
    tap(*field);
    type("a@b");
    press(UIKeyCode::Left);
    type("ö");
    EXPECT_EQ(field->text(), "a@öb");
    EXPECT_EQ(edits, 2);
    pressTimes(2, UIKeyCode::Left, true);
    EXPECT_EQ(field->selectedText(), "@ö");
    press(UIKeyCode::Backspace);
    press(UIKeyCode::Space);
    EXPECT_EQ(field->text(), "a b");
    press(UIKeyCode::Enter);
    EXPECT_EQ(ends, 1);
    EXPECT_EQ(field->accessibilityElement().value, "a b");
    field->setText("two\nlines");
    EXPECT_EQ(field->text(), "two lines");
}

TEST_F(TextEditing, ATapPlacesTheCaretBetweenTheNearestCharacters) {
    const auto field = makeField(200);
    field->setText("iiiiWWWW");
    tap(CGPoint{11, 60});
    type("<");
    tap(CGPoint{200, 60});
    type(">");
    EXPECT_EQ(field->text(), "<iiiiWWWW>");
    touchDown({11, 60});
    touchMove({205, 60});
    touchUp({205, 60});
    EXPECT_EQ(field->selectedText(), "<iiiiWWWW>");
}

TEST_F(TextEditing, TheCaretOfALongTextStaysInsideTheField) {
    const auto field = makeField(80);
    focus(field);
    const auto caret = [&] {
        return field->subviews().front()->frame();
    };
    for (int letter = 0; letter < 40; ++letter) {
        type("M");
        EXPECT_LE(caret().maxX(), 80);
    }
    EXPECT_GT(caret().minX(), 60);
    press(UIKeyCode::Home);
    EXPECT_EQ(caret().minX(), 0);
    press(UIKeyCode::End);
    pressTimes(38, UIKeyCode::Backspace);
    EXPECT_GE(caret().minX(), 0);
    EXPECT_LE(caret().maxX(), 80);
}

TEST_F(TextEditing, TheCaretBlinksOnlyWhileFocused) {
    const auto field = makeField(80);
    const auto blinks = [&] {
        int changes = 0;
        bool last = field->subviews().front()->isHidden();
        for (int step = 0; step < 20; ++step) {
            advance(0.1);
            changes += field->subviews().front()->isHidden() != last;
            last = field->subviews().front()->isHidden();
        }
        return changes;
    };
    EXPECT_EQ(blinks(), 0);
    focus(field);
    EXPECT_NEAR(blinks(), 4, 1);
    focus(nullptr);
    EXPECT_EQ(blinks(), 0);
    EXPECT_TRUE(field->subviews().front()->isHidden());
}

TEST_F(TextEditing, ATextViewMovesByLinesAndScrollsWithTheCaret) {
    const auto view = makeTextView("first\nsecond line\nx\nfourth line");
    int edits = 0;
    view->setTextChangeHandler([&] { ++edits; });
    focus(view);
    press(UIKeyCode::Down);
    press(UIKeyCode::End);
    press(UIKeyCode::Down);
    press(UIKeyCode::Down);
    type("!");
    EXPECT_EQ(view->text(), "first\nsecond line\nx\nfourth line!") << "the column is remembered";
    press(UIKeyCode::Up, true);
    EXPECT_EQ(view->selectedText(), "\nfourth line!");
    press(UIKeyCode::Down);
    pressTimes(20, UIKeyCode::Enter);
    EXPECT_EQ(edits, 21);
    EXPECT_GT(view->contentOffset().y, 200);
    pressTimes(40, UIKeyCode::Up);
    EXPECT_LE(view->contentOffset().y, 8);
    type("0 ");
    EXPECT_EQ(view->text().substr(0, 7), "0 first");
}

TEST_F(TextEditing, ADragScrollsATextViewAndATapPlacesTheCaret) {
    std::string text;
    for (int line = 0; line < 40; ++line)
        text += "line\n";
    const auto view = makeTextView(text);
    touchDown({100, 100});
    for (double y = 100; y > 40; y -= 10) {
        advance(0.02);
        touchMove({100, y});
    }
    advance(1);
    touchUp({100, 40});
    advance(3);
    EXPECT_GT(view->contentOffset().y, 20);
    EXPECT_EQ(application().events().firstResponder(), nullptr);
    tap(CGPoint{10, 60});
    type("X");
    EXPECT_NE(view->text(), text);
    EXPECT_NE(view->text().front(), 'X');
}

}
}
