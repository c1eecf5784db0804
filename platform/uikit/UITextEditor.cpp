#include "platform/uikit/UITextEditor.h"

#include "platform/graphics/CGContext.h"
#include "platform/graphics/UIStringDrawing.h"
#include "platform/uikit/UIKey.h"
#include "platform/uikit/UITextCaret.h"

#include <algorithm>
#include <utility>

namespace vistrel {

namespace {

constexpr int kPageLines = 10;
constexpr UIColor kSelection = UIColor::colorWithRedGreenBlueAlpha(0.26F, 0.42F, 0.95F, 0.3F);

UITextBuffer::Extend extendOf(const UIKey& key) {
    return key.shift ? UITextBuffer::Extend::Yes : UITextBuffer::Extend::No;
}

}

UITextEditor::UITextEditor(Lines lines, const UIFont& font)
    : mode_(lines)
    , lines_(font)
    , caret_(std::make_shared<UITextCaret>()) {}

std::string UITextEditor::fitted(const std::string& text) const {
    std::string result = text;
    if (mode_ == Lines::One)
        std::replace(result.begin(), result.end(), '\n', ' ');
    return result;
}

void UITextEditor::setText(const std::string& text) {
    buffer_.setText(fitted(text));
    column_.reset();
    rebreak();
}

void UITextEditor::setWidth(double width) {
    if (mode_ == Lines::One || width_ == width)
        return;
    width_ = width;
    rebreak();
}

void UITextEditor::rebreak() {
    lines_.breakText(buffer_.text(), width_);
}

UITextEditor::Outcome UITextEditor::keyPressed(const UIKey& key) {
    const Outcome moved = move(key);
    if (moved != Outcome::Ignored)
        return moved;
    const Outcome edited = edit(key);
    if (edited == Outcome::Edited)
        rebreak();
    if (edited != Outcome::Ignored)
        column_.reset();
    return edited;
}

UITextEditor::Outcome UITextEditor::move(const UIKey& key) {
    const auto extend = extendOf(key);
    const auto column = std::exchange(column_, std::nullopt);
    switch (key.code) {
    case UIKeyCode::Left:
        key.control ? buffer_.moveWordBackward(extend) : buffer_.moveBackward(extend);
        return Outcome::Moved;
    case UIKeyCode::Right:
        key.control ? buffer_.moveWordForward(extend) : buffer_.moveForward(extend);
        return Outcome::Moved;
    case UIKeyCode::Home:
    case UIKeyCode::End:
        moveToLineEdge(key.code == UIKeyCode::End, key);
        return Outcome::Moved;
    case UIKeyCode::Up:
    case UIKeyCode::Down:
    case UIKeyCode::PageUp:
    case UIKeyCode::PageDown: {
        if (mode_ == Lines::One)
            return Outcome::Ignored;
        column_ = column;
        const bool up = key.code == UIKeyCode::Up || key.code == UIKeyCode::PageUp;
        const bool page = key.code == UIKeyCode::PageUp || key.code == UIKeyCode::PageDown;
        moveVertically((up ? -1 : 1) * (page ? kPageLines : 1), extend);
        return Outcome::Moved;
    }
    default:
        column_ = column;
        return Outcome::Ignored;
    }
}

void UITextEditor::moveToLineEdge(bool end, const UIKey& key) {
    const auto& line = lines_.lines()[lines_.lineOf(buffer_.caret())];
    const std::size_t inLine = end ? line.end : line.start;
    const std::size_t inText = end ? buffer_.text().size() : 0;
    buffer_.moveTo(key.control ? inText : inLine, extendOf(key));
}

void UITextEditor::moveVertically(int lines, UITextBuffer::Extend extend) {
    if (!column_)
        column_ = caretRect().minX();
    const auto count = static_cast<int>(lines_.lines().size());
    const int target = static_cast<int>(lines_.lineOf(buffer_.caret())) + lines;
    if (target < 0)
        buffer_.moveTo(0, extend);
    else if (target >= count)
        buffer_.moveTo(buffer_.text().size(), extend);
    else
        buffer_.moveTo(lines_.offsetInLine(static_cast<std::size_t>(target), *column_), extend);
}

UITextEditor::Outcome UITextEditor::edit(const UIKey& key) {
    switch (key.code) {
    case UIKeyCode::Backspace:
        return buffer_.deleteBackward() ? Outcome::Edited : Outcome::Moved;
    case UIKeyCode::Delete:
        return buffer_.deleteForward() ? Outcome::Edited : Outcome::Moved;
    case UIKeyCode::Enter:
        if (mode_ == Lines::One)
            return Outcome::Ignored;
        buffer_.insert("\n");
        return Outcome::Edited;
    case UIKeyCode::Space:
        buffer_.insert(" ");
        return Outcome::Edited;
    case UIKeyCode::Character:
        break;
    default:
        return Outcome::Ignored;
    }
    if (key.control && (key.text == "a" || key.text == "A")) {
        buffer_.selectAll();
        return Outcome::Moved;
    }
    if (key.control || key.alt || key.text.empty())
        return Outcome::Ignored;
    buffer_.insert(fitted(key.text));
    return Outcome::Edited;
}

void UITextEditor::touched(CGPoint point, UITextBuffer::Extend extend) {
    column_.reset();
    buffer_.moveTo(lines_.offsetAt(point), extend);
}

void UITextEditor::draw(CGPoint origin, const CGRect& visible, const UIColor& color) const {
    CGContext& context = *UIGraphicsGetCurrentContext();
    const double height = lines_.lineHeight();
    const auto& lines = lines_.lines();
    const auto first = static_cast<std::size_t>(std::max(0.0, visible.minY() / height));
    for (std::size_t index = first; index < lines.size(); ++index) {
        const double y = static_cast<double>(index) * height;
        if (y > visible.maxY())
            return;
        if (buffer_.hasSelection()) {
            context.setFillColor(kSelection);
            const CGRect marked =
                lines_.selectionRect(index, buffer_.selectionStart(), buffer_.selectionEnd());
            if (!marked.isEmpty())
                context.fillRect(marked.offsetBy(origin.x, origin.y));
        }
        color.set();
        const std::string text = lines_.textOf(lines[index]);
        const double width = sizeWithFont(text, lines_.font()).width + 1;
        drawInRectWithFont(text, CGRectMake(origin.x, origin.y + y, width, height), lines_.font(),
                           UILineBreakMode::Clip);
    }
}

}
