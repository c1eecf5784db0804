#pragma once
#include <cstddef>
#include <string>
#include <string_view>

namespace vistrel {

/// Editable UTF-8 text, cut only between characters, with a selection that has a fixed end (the
/// anchor) and a moving one (the caret). A character is a code point with its combining
/// marks.
class UITextBuffer {
public:
    enum class Extend { No, Yes }; ///< whether a move keeps the anchor

    const std::string& text() const { return text_; }
    /// The caret goes to the end. Ill-formed parts become U+FFFD.
    void setText(std::string_view text);

    std::size_t caret() const { return caret_; }
    std::size_t selectionStart() const { return caret_ < anchor_ ? caret_ : anchor_; }
    std::size_t selectionEnd() const { return caret_ < anchor_ ? anchor_ : caret_; }
    bool hasSelection() const { return caret_ != anchor_; }
    std::string selectedText() const;

    /// Replaces the selection with `typed`. Control characters other than line breaks are
    /// dropped.
    void insert(std::string_view typed);
    /// Deletes the selection, else the character before or after the caret. False for nothing.
    bool deleteBackward();
    bool deleteForward();

    /// To a byte offset, rounded down to the start of a character.
    void moveTo(std::size_t offset, Extend extend);
    void moveBackward(Extend extend);
    void moveForward(Extend extend);
    void moveWordBackward(Extend extend);
    void moveWordForward(Extend extend);
    void selectAll();

    std::size_t characterBefore(std::size_t offset) const;
    std::size_t characterAfter(std::size_t offset) const;

private:
    void erase(std::size_t from, std::size_t to);

    std::string text_;
    std::size_t caret_ = 0;
    std::size_t anchor_ = 0;
};

}
