#pragma once
#include "platform/graphics/UIFont.h"
#include "platform/graphics/UIStringDrawing.h"
#include "platform/uikit/UIView.h"

#include <optional>
#include <string>

namespace vistrel {

/// Text, one line by default, centred vertically.
class UILabel : public UIView {
public:
    explicit UILabel(CGRect frame = {});

    const std::string& text() const { return text_; }
    /// Setting the same text again repaints nothing.
    void setText(std::string text);
    void setFont(const UIFont& font);
    const UIFont& font() const { return font_; }
    void setTextColor(const UIColor& color);
    const UIColor& textColor() const { return textColor_; }
    void setTextAlignment(UITextAlignment alignment);
    void setLineBreakMode(UILineBreakMode mode);
    /// 0: as many as fit.
    void setNumberOfLines(int lines);
    void setShadowColor(std::optional<UIColor> color);
    void setShadowOffset(CGSize offset);
    /// A text that is too long is drawn smaller, down to 8 points.
    void setAdjustsFontSizeToFitWidth(bool adjusts);
    /// Used instead of the text colour while highlighted.
    void setHighlightedTextColor(std::optional<UIColor> color);
    void setHighlighted(bool highlighted);
    bool isHighlighted() const { return highlighted_; }

    CGSize sizeThatFits(CGSize size) const override;
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
    UIAccessibilityElement accessibilityElement() const override;

private:
    void drawOneLine(const CGRect& rect);
    void drawLines(const CGRect& rect);
    void drawText(const CGRect& rect, const UIFont& font, UILineBreakMode mode);

    std::string text_;
    UIFont font_ = UIFont::systemFontOfSize(17);
    UIColor textColor_ = UIColor::blackColor();
    UITextAlignment alignment_ = UITextAlignment::Left;
    UILineBreakMode lineBreakMode_ = UILineBreakMode::TailTruncation;
    int numberOfLines_ = 1;
    std::optional<UIColor> shadowColor_;
    CGSize shadowOffset_{0, -1};
    bool adjustsFontSize_ = false;
    std::optional<UIColor> highlightedTextColor_;
    bool highlighted_ = false;
};

}
