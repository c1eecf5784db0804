#include "platform/uikit/UIGlossyButton.h"

#include "platform/graphics/UIStringDrawing.h"
#include "platform/uikit/UIBarDrawing.h"

#include <cmath>

namespace vistrel {

namespace {
constexpr double kTitleMargin = 8;
constexpr double kSmallestTitle = 12;
}

UIGlossyButton::UIGlossyButton(std::string title, const Look& look)
    : title_(std::move(title))
    , look_(look) {
    UIView::setOpaque(false);
}

void UIGlossyButton::setMarked(bool marked) {
    if (marked_ == marked)
        return;
    marked_ = marked;
    setNeedsDisplay();
}

void UIGlossyButton::drawRect(const CGRect& rect) {
    UIBarDrawing::drawGlossyButton(rect, look_.body, look_.radius, isHighlighted());
    if (marked_) {
        CGContext& context = *UIGraphicsGetCurrentContext();
        context.setStrokeColor(UIColor::colorWithWhiteAlpha(1, 0.9F));
        context.setLineWidth(2);
        context.beginPath();
        context.addRoundedRect(rect.insetBy(1.5, 1.5), look_.radius - 1);
        context.strokePath();
    }
    const double width = rect.size.width - 2 * kTitleMargin;
    const UIFont font =
        fontThatFits(title_, UIFont::boldSystemFontOfSize(look_.fontSize), width, kSmallestTitle);
    const double height = std::ceil(font.lineHeight());
    const CGRect line = CGRectMake(rect.minX() + kTitleMargin,
                                   std::floor(rect.midY() - height / 2) - 0.5, width, height);
    look_.shadow.set();
    drawInRectWithFont(title_, line.offsetBy(0, -1), font, UILineBreakMode::TailTruncation,
                       UITextAlignment::Center);
    look_.title.set();
    drawInRectWithFont(title_, line, font, UILineBreakMode::TailTruncation,
                       UITextAlignment::Center);
}

UIAccessibilityElement UIGlossyButton::accessibilityElement() const {
    return {UIAccessibilityRole::Button, title_, {}, isEnabled()};
}

}
