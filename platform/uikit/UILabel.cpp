#include "platform/uikit/UILabel.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

UILabel::UILabel(CGRect frame)
    : UIView(frame) {
    setUserInteractionEnabled(false);
    setOpaque(false);
}

void UILabel::setText(std::string text) {
    if (text_ == text)
        return;
    text_ = std::move(text);
    setNeedsDisplay();
}

void UILabel::setFont(const UIFont& font) {
    if (font_ == font)
        return;
    font_ = font;
    setNeedsDisplay();
}

void UILabel::setTextColor(const UIColor& color) {
    if (textColor_ == color)
        return;
    textColor_ = color;
    setNeedsDisplay();
}

void UILabel::setTextAlignment(UITextAlignment alignment) {
    alignment_ = alignment;
    setNeedsDisplay();
}

void UILabel::setLineBreakMode(UILineBreakMode mode) {
    lineBreakMode_ = mode;
    setNeedsDisplay();
}

void UILabel::setNumberOfLines(int lines) {
    numberOfLines_ = std::max(0, lines);
    setNeedsDisplay();
}

void UILabel::setShadowColor(std::optional<UIColor> color) {
    if (shadowColor_ == color)
        return;
    shadowColor_ = color;
    setNeedsDisplay();
}

void UILabel::setShadowOffset(CGSize offset) {
    shadowOffset_ = offset;
    setNeedsDisplay();
}

void UILabel::setAdjustsFontSizeToFitWidth(bool adjusts) {
    adjustsFontSize_ = adjusts;
    setNeedsDisplay();
}

void UILabel::setHighlightedTextColor(std::optional<UIColor> color) {
    highlightedTextColor_ = color;
    setNeedsDisplay();
}

void UILabel::setHighlighted(bool highlighted) {
    if (highlighted_ == highlighted)
        return;
    highlighted_ = highlighted;
    if (highlightedTextColor_)
        setNeedsDisplay();
}

CGSize UILabel::sizeThatFits(CGSize size) const {
    if (text_.empty())
        return {};
    if (numberOfLines_ == 1) {
        const CGSize line = sizeWithFont(text_, font_);
        return {std::ceil(line.width), std::ceil(line.height)};
    }
    constexpr double kUnlimited = 1e6;
    const double width = size.width > 0 ? size.width : kUnlimited;
    const double height =
        numberOfLines_ > 0 ? std::ceil(numberOfLines_ * font_.lineHeight()) : kUnlimited;
    const CGSize fit = sizeWithFontConstrainedToSize(text_, font_, {width, height});
    return {std::ceil(fit.width), std::ceil(fit.height)};
}

void UILabel::drawRect(const CGRect& rect) {
    if (text_.empty())
        return;
    if (numberOfLines_ == 1)
        drawOneLine(rect);
    else
        drawLines(rect);
}

void UILabel::drawOneLine(const CGRect& rect) {
    constexpr double kMinimumSize = 8;
    const UIFont font =
        adjustsFontSize_ ? fontThatFits(text_, font_, rect.size.width, kMinimumSize) : font_;
    const double y = std::floor(rect.minY() + (rect.size.height - font.lineHeight()) / 2);
    drawText({{rect.minX(), y}, {rect.size.width, std::ceil(font.lineHeight())}}, font,
             lineBreakMode_);
}

void UILabel::drawLines(const CGRect& rect) {
    const bool truncates = lineBreakMode_ == UILineBreakMode::HeadTruncation ||
                           lineBreakMode_ == UILineBreakMode::MiddleTruncation ||
                           lineBreakMode_ == UILineBreakMode::TailTruncation;
    const UILineBreakMode mode = truncates ? UILineBreakMode::WordWrap : lineBreakMode_;
    const double limit = numberOfLines_ > 0
                             ? std::min(rect.size.height, numberOfLines_ * font_.lineHeight() + 0.5)
                             : rect.size.height;
    const CGSize fit =
        sizeWithFontConstrainedToSize(text_, font_, {rect.size.width, limit + 0.5}, mode);
    const double y = std::floor(rect.minY() + (rect.size.height - fit.height) / 2);
    drawText({{rect.minX(), y}, {rect.size.width, fit.height}}, font_, mode);
}

void UILabel::drawText(const CGRect& rect, const UIFont& font, UILineBreakMode mode) {
    if (shadowColor_) {
        shadowColor_->set();
        drawInRectWithFont(text_, rect.offsetBy(shadowOffset_.width, shadowOffset_.height), font,
                           mode, alignment_);
    }
    const bool usesHighlight = highlighted_ && highlightedTextColor_;
    (usesHighlight ? *highlightedTextColor_ : textColor_).set();
    drawInRectWithFont(text_, rect, font, mode, alignment_);
}

UIAccessibilityElement UILabel::accessibilityElement() const {
    UIAccessibilityElement element = UIView::accessibilityElement();
    if (element.role != UIAccessibilityRole::None || text_.empty())
        return element;
    element.role = UIAccessibilityRole::Label;
    element.label = text_;
    return element;
}

}
