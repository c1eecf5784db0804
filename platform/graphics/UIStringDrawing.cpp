#include "platform/graphics/UIStringDrawing.h"

#include "platform/graphics/CGContext.h"
#include "platform/graphics/TextLayout.h"

#include <algorithm>
#include <cmath>
#include <pango/pangocairo.h>

namespace vistrel {

namespace {

constexpr double kAnyWidth = -1;

double points(int pangoUnits) {
    return static_cast<double>(pangoUnits) / PANGO_SCALE;
}

double lineWidth(PangoLayoutLine* line) {
    PangoRectangle logical;
    pango_layout_line_get_extents(line, nullptr, &logical);
    return points(logical.width);
}

double widestLine(PangoLayout* layout) {
    double widest = 0;
    for (auto* item = pango_layout_get_lines_readonly(layout); item != nullptr; item = item->next)
        widest = std::max(widest, lineWidth(static_cast<PangoLayoutLine*>(item->data)));
    return widest;
}

bool wraps(UILineBreakMode mode) {
    return mode == UILineBreakMode::WordWrap || mode == UILineBreakMode::CharacterWrap;
}

double indent(UITextAlignment alignment, double available, double used) {
    switch (alignment) {
    case UITextAlignment::Left:
        return 0;
    case UITextAlignment::Center:
        return (available - used) / 2;
    case UITextAlignment::Right:
        return available - used;
    }
    return 0;
}

void drawLines(CGContext& context, PangoLayout* layout, const CGRect& rect, const UIFont& font,
               UITextAlignment alignment) {
    auto* cairo = context.native();
    const auto& color = context.fillColor();
    cairo_set_source_rgba(cairo, color.red, color.green, color.blue, color.alpha * context.alpha());
    const double lineHeight = font.lineHeight();
    double top = 0;
    for (auto* item = pango_layout_get_lines_readonly(layout); item != nullptr; item = item->next) {
        if (top > 0 && top >= rect.size.height)
            break;
        auto* line = static_cast<PangoLayoutLine*>(item->data);
        const double x = rect.minX() + indent(alignment, rect.size.width, lineWidth(line));
        cairo_move_to(cairo, x, rect.minY() + top + font.ascender());
        pango_cairo_show_layout_line(cairo, line);
        top += lineHeight;
    }
    cairo_new_path(cairo);
}

}

CGSize sizeWithFont(const std::string& text, const UIFont& font) {
    auto* layout = TextLayout::layoutFor(text, font, kAnyWidth, UILineBreakMode::Clip);
    return {std::ceil(widestLine(layout)), text.empty() ? 0 : std::ceil(font.lineHeight())};
}

double caretPositionInLine(const std::string& line, const UIFont& font, std::size_t offset) {
    auto* layout = TextLayout::layoutFor(line, font, kAnyWidth, UILineBreakMode::Clip);
    // Invalid bytes were replaced, which shifts the offsets.
    if (line != pango_layout_get_text(layout))
        return sizeWithFont(line.substr(0, offset), font).width;
    PangoRectangle caret;
    pango_layout_get_cursor_pos(layout, static_cast<int>(offset), &caret, nullptr);
    return std::ceil(points(caret.x));
}

CGSize sizeWithFontConstrainedToSize(const std::string& text, const UIFont& font, CGSize size,
                                     UILineBreakMode mode) {
    if (text.empty())
        return {};
    auto* layout = TextLayout::layoutFor(text, font, size.width, mode);
    const double lineHeight = font.lineHeight();
    const int fitting = std::max(1, static_cast<int>((size.height + 0.5) / lineHeight));
    const int lines = std::min(pango_layout_get_line_count(layout), fitting);
    return {std::min(std::ceil(widestLine(layout)), std::max(size.width, 0.0)),
            std::ceil(lines * lineHeight)};
}

void drawInRectWithFont(const std::string& text, const CGRect& rect, const UIFont& font,
                        UILineBreakMode mode, UITextAlignment alignment) {
    auto* context = UIGraphicsGetCurrentContext();
    if (context == nullptr || text.empty() || rect.size.width <= 0)
        return;
    // A line that fits needs no cutting, and its layout serves every width.
    auto* layout = TextLayout::layoutFor(text, font, kAnyWidth, UILineBreakMode::Clip);
    const bool whole =
        !wraps(mode) && (mode == UILineBreakMode::Clip || widestLine(layout) <= rect.size.width);
    if (!whole)
        layout = TextLayout::layoutFor(text, font, rect.size.width, mode);
    if (mode != UILineBreakMode::Clip) {
        drawLines(*context, layout, rect, font, alignment);
        return;
    }
    context->saveGState();
    context->clipToRect(CGRectMake(rect.minX(), rect.minY(), rect.size.width,
                                   std::max(rect.size.height, font.lineHeight())));
    drawLines(*context, layout, rect, font, alignment);
    context->restoreGState();
}

UIFont fontThatFits(const std::string& text, const UIFont& font, double width, double minimum) {
    const auto widthAt = [&](double size) {
        return widestLine(
            TextLayout::layoutFor(text, font.fontWithSize(size), kAnyWidth, UILineBreakMode::Clip));
    };
    double size = font.pointSize();
    while (size > minimum && widthAt(size) > width)
        size = std::max(minimum, size - 1);
    return font.fontWithSize(size);
}

}
