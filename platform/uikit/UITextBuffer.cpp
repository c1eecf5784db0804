#include "platform/uikit/UITextBuffer.h"

#include "platform/foundation/UTF8Text.h"

#include <algorithm>

namespace vistrel {

namespace {

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

char32_t codePointAt(const std::string& text, std::size_t offset) {
    std::string_view rest = std::string_view(text).substr(offset);
    return rest.empty() ? 0 : takeUTF8Character(rest);
}

/// Marks, joiners and selectors that belong to the character before them.
bool combines(char32_t point) {
    return (point >= 0x300 && point <= 0x36F) || (point >= 0x1AB0 && point <= 0x1AFF) ||
           (point >= 0x20D0 && point <= 0x20FF) || (point >= 0xFE00 && point <= 0xFE0F) ||
           (point >= 0x1F3FB && point <= 0x1F3FF) || point == 0x200D;
}

bool isWordPart(char32_t point) {
    return point > 0x7F || (point >= '0' && point <= '9') || (point >= 'A' && point <= 'Z') ||
           (point >= 'a' && point <= 'z') || point == '_';
}

std::string cleaned(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const char32_t point = takeUTF8Character(text);
        const bool isControl = (point < 0x20 && point != '\n') || (point >= 0x7F && point < 0xA0);
        if (!isControl)
            appendUTF8Character(result, point);
    }
    return result;
}

}

void UITextBuffer::setText(std::string_view text) {
    text_ = cleaned(text);
    caret_ = anchor_ = text_.size();
}

std::string UITextBuffer::selectedText() const {
    return text_.substr(selectionStart(), selectionEnd() - selectionStart());
}

void UITextBuffer::insert(std::string_view typed) {
    erase(selectionStart(), selectionEnd());
    const std::string added = cleaned(typed);
    text_.insert(caret_, added);
    caret_ += added.size();
    anchor_ = caret_;
}

void UITextBuffer::erase(std::size_t from, std::size_t to) {
    text_.erase(from, to - from);
    caret_ = anchor_ = from;
}

bool UITextBuffer::deleteBackward() {
    const std::size_t from = hasSelection() ? selectionStart() : characterBefore(caret_);
    const std::size_t to = selectionEnd();
    erase(from, to);
    return from != to;
}

bool UITextBuffer::deleteForward() {
    const std::size_t from = selectionStart();
    const std::size_t to = hasSelection() ? selectionEnd() : characterAfter(caret_);
    erase(from, to);
    return from != to;
}

void UITextBuffer::moveTo(std::size_t offset, Extend extend) {
    offset = std::min(offset, text_.size());
    while (offset > 0 && offset < text_.size() && isContinuation(text_[offset]))
        --offset;
    caret_ = offset;
    if (extend == Extend::No)
        anchor_ = offset;
}

void UITextBuffer::moveBackward(Extend extend) {
    const bool collapses = hasSelection() && extend == Extend::No;
    moveTo(collapses ? selectionStart() : characterBefore(caret_), extend);
}

void UITextBuffer::moveForward(Extend extend) {
    const bool collapses = hasSelection() && extend == Extend::No;
    moveTo(collapses ? selectionEnd() : characterAfter(caret_), extend);
}

void UITextBuffer::moveWordBackward(Extend extend) {
    std::size_t offset = caret_;
    while (offset > 0 && !isWordPart(codePointAt(text_, characterBefore(offset))))
        offset = characterBefore(offset);
    while (offset > 0 && isWordPart(codePointAt(text_, characterBefore(offset))))
        offset = characterBefore(offset);
    moveTo(offset, extend);
}

void UITextBuffer::moveWordForward(Extend extend) {
    std::size_t offset = caret_;
    while (offset < text_.size() && !isWordPart(codePointAt(text_, offset)))
        offset = characterAfter(offset);
    while (offset < text_.size() && isWordPart(codePointAt(text_, offset)))
        offset = characterAfter(offset);
    moveTo(offset, extend);
}

void UITextBuffer::selectAll() {
    anchor_ = 0;
    caret_ = text_.size();
}

std::size_t UITextBuffer::characterBefore(std::size_t offset) const {
    while (offset > 0) {
        do
            --offset;
        while (offset > 0 && isContinuation(text_[offset]));
        if (!combines(codePointAt(text_, offset)))
            break;
    }
    return offset;
}

std::size_t UITextBuffer::characterAfter(std::size_t offset) const {
    while (offset < text_.size()) {
        do
            ++offset;
        while (offset < text_.size() && isContinuation(text_[offset]));
        if (!combines(codePointAt(text_, offset)))
            break;
    }
    return offset;
}

}
