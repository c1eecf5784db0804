#include "platform/uikit/UITableViewCellParts.h"

#include "platform/foundation/NSBundle.h"
#include "platform/graphics/UIFont.h"
#include "platform/graphics/UIStringDrawing.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vistrel {

namespace {

const UIFont kConfirmationFont = UIFont::boldSystemFontOfSize(14);

}

UITableViewCellSelectionView::UITableViewCellSelectionView() {
    setUserInteractionEnabled(false);
    setAlpha(0);
}

void UITableViewCellSelectionView::drawRect(const CGRect& rect) {
    const CGGradient blue = {{{0.02F, 0.55F, 0.96F, 1}, {0.005F, 0.37F, 0.91F, 1}}, {}};
    UIGraphicsGetCurrentContext()->drawLinearGradient(blue, rect.origin,
                                                      {rect.minX(), rect.maxY()});
}

UITableViewCellAccessoryView::UITableViewCellAccessoryView() {
    setOpaque(false);
    setUserInteractionEnabled(false);
}

void UITableViewCellAccessoryView::setHighlighted(bool highlighted) {
    if (highlighted_ == highlighted)
        return;
    highlighted_ = highlighted;
    setNeedsDisplay();
}

void UITableViewCellAccessoryView::drawRect(const CGRect& rect) {
    CGContext& context = *UIGraphicsGetCurrentContext();
    context.setStrokeColor(highlighted_ ? UIColor::whiteColor()
                                        : UIColor::colorWithWhiteAlpha(0.5F, 1));
    context.setLineWidth(3);
    context.beginPath();
    context.moveTo(rect.minX() + 1.5, rect.minY() + 1.5);
    context.lineTo(rect.maxX() - 2.5, rect.midY());
    context.lineTo(rect.minX() + 1.5, rect.maxY() - 1.5);
    context.strokePath();
}

UITableViewCellDeleteCircle::UITableViewCellDeleteCircle() {
    setOpaque(false);
    setAlpha(0);
}

void UITableViewCellDeleteCircle::drawRect(const CGRect& rect) {
    CGContext& context = *UIGraphicsGetCurrentContext();
    context.setFillColor(UIColor::colorWithWhiteAlpha(0, 0.35F));
    context.fillEllipse(rect.insetBy(1, 1).offsetBy(0, 1));
    context.setFillColor(UIColor::whiteColor());
    context.fillEllipse(rect.insetBy(1, 1));
    context.saveGState();
    context.beginPath();
    context.arc(rect.midX(), rect.midY(), rect.size.width / 2 - 3, 0, 2 * std::numbers::pi);
    context.clipToPath();
    context.drawLinearGradient({{{0.98F, 0.45F, 0.42F, 1}, {0.78F, 0.05F, 0.05F, 1}}, {}},
                               {rect.midX(), rect.minY()}, {rect.midX(), rect.maxY()});
    context.restoreGState();
    context.setFillColor(UIColor::whiteColor());
    context.fillRect(CGRectMake(rect.midX() - 6, rect.midY() - 2, 12, 4));
}

UIAccessibilityElement UITableViewCellDeleteCircle::accessibilityElement() const {
    if (alpha() == 0 || !superview())
        return {};
    const std::string label =
        NSLocalizedString("Delete") + " " + superview()->accessibilityElement().label;
    return {UIAccessibilityRole::Button, label, {}, isEnabled()};
}

UITableViewCellConfirmationButton::UITableViewCellConfirmationButton() {
    setOpaque(false);
    setAlpha(0);
}

void UITableViewCellConfirmationButton::setTitle(std::string title) {
    if (title == title_)
        return;
    title_ = std::move(title);
    setNeedsDisplay();
}

double UITableViewCellConfirmationButton::widthForTitle(const std::string& title) {
    return std::max(60.0, std::ceil(sizeWithFont(title, kConfirmationFont).width) + 20);
}

void UITableViewCellConfirmationButton::setHighlighted(bool highlighted) {
    if (isHighlighted() != highlighted)
        setNeedsDisplay();
    UIControl::setHighlighted(highlighted);
}

void UITableViewCellConfirmationButton::drawRect(const CGRect& rect) {
    CGContext& context = *UIGraphicsGetCurrentContext();
    context.saveGState();
    context.beginPath();
    context.addRoundedRect(rect, 5);
    context.clipToPath();
    context.drawLinearGradient({{{0.97F, 0.55F, 0.53F, 1},
                                 {0.80F, 0.10F, 0.10F, 1},
                                 {0.68F, 0.02F, 0.03F, 1},
                                 {0.79F, 0.08F, 0.08F, 1}},
                                {0, 0.5, 0.5, 1}},
                               {0, rect.minY()}, {0, rect.maxY()});
    if (isHighlighted()) {
        context.setFillColor(UIColor::colorWithWhiteAlpha(0, 0.35F));
        context.fillRect(rect);
    }
    context.restoreGState();
    const double height = kConfirmationFont.lineHeight();
    const CGRect text =
        CGRectMake(4, std::round((rect.size.height - height) / 2), rect.size.width - 8, height);
    UIColor::colorWithWhiteAlpha(0, 0.5F).set();
    drawInRectWithFont(title_, text.offsetBy(0, -1), kConfirmationFont,
                       UILineBreakMode::TailTruncation, UITextAlignment::Center);
    UIColor::whiteColor().set();
    drawInRectWithFont(title_, text, kConfirmationFont, UILineBreakMode::TailTruncation,
                       UITextAlignment::Center);
}

UIAccessibilityElement UITableViewCellConfirmationButton::accessibilityElement() const {
    if (alpha() == 0)
        return {};
    return {UIAccessibilityRole::Button, title_, {}, isEnabled()};
}

}
