#include "platform/uikit/UITextLines.h"

#include "platform/graphics/UIStringDrawing.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

double UITextLines::lineHeight() const {
    return std::ceil(font_.lineHeight());
}

CGSize UITextLines::size() const {
    double width = 0;
    for (const Line& line : lines_)
        width = std::max(width, widthBetween(line.start, line.end));
    return {width, lineHeight() * static_cast<double>(lines_.size())};
}

void UITextLines::breakText(const std::string& text, double width) {
    text_ = text;
    lines_.clear();
    std::size_t start = 0;
    while (true) {
        const std::size_t end = std::min(text_.find('\n', start), text_.size());
        breakParagraph(start, end, width);
        if (end == text_.size())
            return;
        start = end + 1;
    }
}

void UITextLines::breakParagraph(std::size_t start, std::size_t end, double width) {
    while (width > 0 && widthBetween(start, end) > width) {
        const std::size_t fits = fittingEnd(start, end, width);
        const std::size_t space = text_.rfind(' ', fits);
        const bool hasSpace = space != std::string::npos && space > start;
        const std::size_t broken = hasSpace ? space : fits;
        lines_.push_back({start, broken});
        start = hasSpace ? space + 1 : broken;
    }
    lines_.push_back({start, end});
}

/// The last offset at which the text still fits; at least one character further.
std::size_t UITextLines::fittingEnd(std::size_t start, std::size_t end, double width) const {
    std::vector<std::size_t> offsets;
    for (std::size_t at = nextCharacter(start); at < end; at = nextCharacter(at))
        offsets.push_back(at);
    offsets.push_back(end);
    const auto tooWide =
        std::partition_point(offsets.begin(), offsets.end(), [&](std::size_t offset) {
            return widthBetween(start, offset) <= width;
        });
    return tooWide == offsets.begin() ? offsets.front() : *std::prev(tooWide);
}

double UITextLines::widthBetween(std::size_t start, std::size_t end) const {
    return start == end ? 0 : sizeWithFont(text_.substr(start, end - start), font_).width;
}

double UITextLines::caretPosition(const Line& line, std::size_t offset) const {
    return caretPositionInLine(textOf(line), font_, offset - line.start);
}

std::size_t UITextLines::nextCharacter(std::size_t offset) const {
    do
        ++offset;
    while (offset < text_.size() && (static_cast<unsigned char>(text_[offset]) & 0xC0) == 0x80);
    return offset;
}

std::size_t UITextLines::lineOf(std::size_t offset) const {
    std::size_t line = lines_.size() - 1;
    while (line > 0 && lines_[line].start > offset)
        --line;
    return line;
}

CGRect UITextLines::caretRect(std::size_t offset) const {
    const std::size_t index = lineOf(offset);
    const Line& line = lines_[index];
    return CGRectMake(caretPosition(line, std::min(offset, line.end)),
                      static_cast<double>(index) * lineHeight(), 0, lineHeight());
}

std::size_t UITextLines::offsetAt(CGPoint point) const {
    const double row = std::floor(point.y / lineHeight());
    const auto last = static_cast<double>(lines_.size() - 1);
    return offsetInLine(static_cast<std::size_t>(std::clamp(row, 0.0, last)), point.x);
}

std::size_t UITextLines::offsetInLine(std::size_t index, double x) const {
    const Line& line = lines_[std::min(index, lines_.size() - 1)];
    std::size_t nearest = line.start;
    double distance = std::abs(x - caretPosition(line, nearest));
    for (std::size_t offset = line.start; offset < line.end;) {
        offset = nextCharacter(offset);
        const double further = std::abs(x - caretPosition(line, offset));
        if (further <= distance) {
            nearest = offset;
            distance = further;
        }
    }
    return nearest;
}

CGRect UITextLines::selectionRect(std::size_t index, std::size_t from, std::size_t to) const {
    const Line& line = lines_[index];
    const std::size_t start = std::max(from, line.start);
    const std::size_t end = std::min(to, line.end);
    if (start > end || (start == end && from != to && to <= line.end))
        return {};
    const auto [left, right] = std::minmax({caretPosition(line, start), caretPosition(line, end)});
    const bool takesBreak = to > line.end;
    return CGRectMake(left, static_cast<double>(index) * lineHeight(),
                      right - left + (takesBreak ? 4 : 0), lineHeight());
}

std::string UITextLines::textOf(const Line& line) const {
    return text_.substr(line.start, line.end - line.start);
}

}
