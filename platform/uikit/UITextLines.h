#pragma once
#include "platform/graphics/CGGeometry.h"
#include "platform/graphics/UIFont.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vistrel {

/// A text broken into lines, and where its characters stand. Offsets are bytes between characters;
/// points count from the upper left corner of the text.
class UITextLines {
public:
    struct Line {
        std::size_t start = 0;
        std::size_t end = 0; ///< without the line break or the space at which it was broken
    };

    explicit UITextLines(const UIFont& font)
        : font_(font) {}

    /// Width 0 or less: one line for each paragraph, of any length.
    void breakText(const std::string& text, double width);

    const std::vector<Line>& lines() const { return lines_; }
    double lineHeight() const;
    CGSize size() const;
    std::size_t lineOf(std::size_t offset) const;
    /// Where a caret before the character at `offset` stands: a line high, without width.
    CGRect caretRect(std::size_t offset) const;
    /// Where the caret goes for a touch there.
    std::size_t offsetAt(CGPoint point) const;
    /// The offset right above (-1) or below (1) at `x`; the text's start or end at its edges.
    std::size_t offsetInLine(std::size_t line, double x) const;
    /// The marked part of a line, empty when there is none.
    CGRect selectionRect(std::size_t line, std::size_t from, std::size_t to) const;
    std::string textOf(const Line& line) const;
    const UIFont& font() const { return font_; }

private:
    void breakParagraph(std::size_t start, std::size_t end, double width);
    std::size_t fittingEnd(std::size_t start, std::size_t end, double width) const;
    double widthBetween(std::size_t start, std::size_t end) const;
    std::size_t nextCharacter(std::size_t offset) const;

    UIFont font_;
    std::string text_;
    std::vector<Line> lines_{Line{}};
};

}
