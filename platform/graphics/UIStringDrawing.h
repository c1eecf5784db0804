#pragma once
#include "platform/graphics/CGGeometry.h"
#include "platform/graphics/UIFont.h"

#include <cstddef>
#include <string>

namespace vistrel {

enum class UILineBreakMode {
    WordWrap,
    CharacterWrap,
    Clip,
    HeadTruncation,
    TailTruncation,
    MiddleTruncation
};
enum class UITextAlignment { Left, Center, Right };

/// Size of one line, in points.
CGSize sizeWithFont(const std::string& text, const UIFont& font);
/// Where the caret before the byte at `offset` stands in a line, in whole points from its left
/// edge: in text that is read from right to left, to the right of that character.
double caretPositionInLine(const std::string& line, const UIFont& font, std::size_t offset);
/// Size of the text broken to `width`, at most `height` high (whole lines).
CGSize sizeWithFontConstrainedToSize(const std::string& text, const UIFont& font, CGSize size,
                                     UILineBreakMode mode = UILineBreakMode::WordWrap);
/// Draws in the current colour with the first line's top at the rectangle's top. Truncating modes
/// draw one line, cut with an ellipsis when it is wider than the rectangle; the height does not
/// clip the first line. Wrapping modes draw the lines that begin inside the rectangle.
void drawInRectWithFont(const std::string& text, const CGRect& rect, const UIFont& font,
                        UILineBreakMode mode = UILineBreakMode::WordWrap,
                        UITextAlignment alignment = UITextAlignment::Left);
/// The largest size from `font`'s down to `minimum` at which the text fits `width` on one line.
UIFont fontThatFits(const std::string& text, const UIFont& font, double width, double minimum);

}
