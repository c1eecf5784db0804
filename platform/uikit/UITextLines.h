#pragma once
#include "platform/graphics/CGGeometry.h"
#include "platform/graphics/UIFont.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vistrel {

/// Text broken into lines, with the positions of its characters. Offsets are bytes, at character
/// boundaries; points count from the upper left corner of the text.
class UITextLines {
public:
    struct Line {
        std::size_t start = 0;
        std::size_t end = 0; ///< without the line break or wrapping space
    };

    explicit UITextLines(const UIFont& font)
        : font_(font) {}

    /// Width 0 or less: one line for each paragraph, of any length.
    void breakText(const std::string& text, double width);

    const std::vector<Line>& lines() const { return lines_; }
    double lineHeight() const;
    CGSize size() const;
    std::size_t lineOf(std::size_t offset) const;
    /// The caret before the character at `offset`: one line tall, zero width.
    CGRect caretRect(std::size_t offset) const;
    /// The caret offset for a touch there.
    std::size_t offsetAt(CGPoint point) const;
    /// The offset one line above (-1) or below (1) at `x`; the start or end of the text at its
    /// edges.
    std::size_t offsetInLine(std::size_t line, double x) const;
    /// The selected part of a line; empty for none.
    CGRect selectionRect(std::size_t line, std::size_t from, std::size_t to) const;
    std::string textOf(const Line& line) const;
    const UIFont& font() const { return font_; }

private:
    void breakParagraph(std::size_t start, std::size_t end, double width);
    std::size_t fittingEnd(std::size_t start, std::size_t end, double width) const;
    double caretPosition(const Line& line, std::size_t offset) const;
    double widthBetween(std::size_t start, std::size_t end) const;
    std::size_t nextCharacter(std::size_t offset) const;

    UIFont font_;
    std::string text_;
    std::vector<Line> lines_{Line{}};
};

}
