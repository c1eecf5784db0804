#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UITextBuffer.h"
#include "platform/uikit/UITextField.h"
#include "platform/uikit/UITextLines.h"
#include "platform/uikit/UITextView.h"
#include "tests/support/ui/ScreenTest.h"

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

/// Presses a key by its name; any other text is typed.
void press(UITextBuffer& buffer, const std::string& key) {
    using enum UITextBuffer::Extend;
    if (key == "left" || key == "shift-left")
        buffer.moveBackward(key == "left" ? No : Yes);
    else if (key == "right")
        buffer.moveForward(No);
    else if (key == "word-left")
        buffer.moveWordBackward(No);
    else if (key == "word-right")
        buffer.moveWordForward(No);
    else if (key == "home")
        buffer.moveTo(0, No);
    else if (key.starts_with("at-"))
        buffer.moveTo(static_cast<std::size_t>(std::stoi(key.substr(3))), No);
    else if (key == "backspace")
        buffer.deleteBackward();
    else if (key == "delete")
        buffer.deleteForward();
    else
        buffer.insert(key);
}

TEST(TextBuffer, EditsAndMovesOnlyBetweenCharacters) {
    const std::tuple<std::string, std::vector<std::string>, std::string> cases[] = {
        {"", {"backspace", "delete", "left", "right"}, "|"},
        {"ab", {"left", "x"}, "ax|b"},
        {"Grüße", {"left", "left", "backspace"}, "Gr|ße"},
        {"日本語", {"left", "left"}, "日|本語"},
        {"e\u0301te\u0301", {"left"}, "e\u0301t|e\u0301"},
        {"e\u0301te\u0301", {"backspace", "backspace", "backspace"}, "|"},
        {"a\u0300\u036F\u0370", {"left", "left"}, "|a\u0300\u036F\u0370"},
        {"👍🏻👍🏿", {"left"}, "👍🏻|👍🏿"},
        {"👍🏽!", {"home", "right"}, "👍🏽|!"},
        {"👍🏽!", {"home", "delete"}, "|!"},
        {"abcd", {"left", "shift-left", "shift-left"}, "a|bc^d"},
        {"abcd", {"left", "shift-left", "shift-left", "é"}, "aé|d"},
        {"abcd", {"left", "shift-left", "shift-left", "backspace"}, "a|d"},
        {"abcd", {"left", "shift-left", "shift-left", "left"}, "a|bcd"},
        {"abcd", {"left", "shift-left", "shift-left", "right"}, "abc|d"},
        {"one  two", {"word-left", "word-left"}, "|one  two"},
        {"one  two", {"home", "word-right", "word-right"}, "one  two|"},
        {"a", {"b\x01\x1b\tc\nd"}, "abc\nd|"},
        {"a", {"\xff\xc3"}, "a\uFFFD\uFFFD|"},
        {"日本", {"at-4"}, "日|本"},
        {"日本", {"at-99"}, "日本|"},
    };
    for (const auto& [text, keys, expected] : cases) {
        UITextBuffer buffer;
        buffer.setText(text);
        for (const std::string& key : keys)
            press(buffer, key);
        EXPECT_EQ(picture(buffer), expected) << text;
    }
}

class TextEditing : public support::ScreenTest {
protected:
    std::shared_ptr<UITextField> makeField(double width) {
        return add<UITextField>(CGRectMake(10, 40, width, 40));
    }
    std::shared_ptr<UITextView> makeTextView(const std::string& text) {
        auto made = add<UITextView>(CGRectMake(0, 20, 200, 100));
        made->setText(text);
        return made;
    }
    void focus(const std::shared_ptr<UIView>& view) {
        application().events().setFirstResponder(view);
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
    expectSteps({{"tap 20,60; type a@b; key Left; type ö", "a@öb "},
                 {"shift Left 2", "a@öb @ö"},
                 {"key Backspace; key Space", "a b "},
                 {"key Enter", "a b "}},
                [&] { return field->text() + " " + field->selectedText(); });
    EXPECT_EQ(edits, 4);
    EXPECT_EQ(ends, 1);
    EXPECT_EQ(field->accessibilityElement().value, "a b");
    field->setText("two\nlines");
    EXPECT_EQ(field->text(), "two lines");
}

TEST_F(TextEditing, ATapPlacesTheCaretBetweenTheNearestCharacters) {
    const auto field = makeField(200);
    field->setText("iiiiWWWW");
    act("tap 11,60; type <; tap 200,60; type >");
    EXPECT_EQ(field->text(), "<iiiiWWWW>");
    act("down 11,60; move 205,60; up 205,60");
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
    act("key Home");
    EXPECT_EQ(caret().minX(), 0);
    act("key End; key Backspace 38");
    EXPECT_GE(caret().minX(), 0);
    EXPECT_LE(caret().maxX(), 80);
}

TEST_F(TextEditing, TheCaretBlinksOnlyWhileFocused) {
    const auto field = makeField(80);
    const auto caret = field->subviews().front();
    const auto blinks = [&] {
        int changes = 0;
        for (int step = 0; step < 20; ++step) {
            const bool last = caret->isHidden();
            advance(0.1);
            changes += caret->isHidden() != last;
        }
        return changes;
    };
    EXPECT_EQ(blinks(), 0);
    focus(field);
    EXPECT_NEAR(blinks(), 4, 1);
    focus(nullptr);
    EXPECT_EQ(blinks(), 0);
    EXPECT_TRUE(caret->isHidden());
}

TEST_F(TextEditing, ATextViewMovesByLinesAndScrollsWithTheCaret) {
    const auto view = makeTextView("first\nsecond line\nx\nfourth line");
    int edits = 0;
    view->setTextChangeHandler([&] { ++edits; });
    focus(view);
    act("key Down; key End; key Down 2; type !");
    EXPECT_EQ(view->text(), "first\nsecond line\nx\nfourth line!") << "the column is remembered";
    act("shift Up");
    EXPECT_EQ(view->selectedText(), "\nfourth line!");
    act("key Down; key Enter 20");
    EXPECT_EQ(edits, 21);
    EXPECT_GT(view->contentOffset().y, 200);
    act("key Up 40; type 0");
    EXPECT_LE(view->contentOffset().y, 8);
    EXPECT_TRUE(view->text().starts_with("0first"));
}

TEST_F(TextEditing, ADragScrollsATextViewAndATapPlacesTheCaret) {
    std::string text;
    for (int line = 0; line < 40; ++line)
        text += "line\n";
    const auto view = makeTextView(text);
    act("drag 100,100 100,40 0.12; wait 3");
    EXPECT_GT(view->contentOffset().y, 20);
    EXPECT_EQ(application().events().firstResponder(), nullptr);
    act("tap 10,60; type X");
    EXPECT_NE(view->text(), text);
    EXPECT_NE(view->text().front(), 'X');
}

}
}
