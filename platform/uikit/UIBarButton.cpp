#include "platform/uikit/UIBarButton.h"

#include "platform/graphics/UIImage.h"
#include "platform/graphics/UIStringDrawing.h"
#include "platform/uikit/UIBarSymbols.h"
#include "platform/uikit/UITouchGlow.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

constexpr double kBodyHeight = 31; ///< the light line under the body included
constexpr double kPadding = 10;
constexpr double kArrowPadding = 6;
constexpr double kSymbolWidth = 20;
constexpr double kMinimumBodyWidth = 33;
constexpr double kMinimumPlainWidth = 40;
constexpr double kGlowRadius = 30;
constexpr float kDisabledAlpha = 0.4F;

UIFont titleFont() {
    return UIFont::boldSystemFontOfSize(12.5);
}

}

UIBarButton::UIBarButton(std::shared_ptr<UIBarButtonItem> item, Place place,
                         const UIColor& barColor, UIBarDrawing::ButtonShape shape)
    : item_(std::move(item))
    , place_(place)
    , barColor_(barColor)
    , shape_(shape) {
    UIView::setOpaque(false);
    UIControl::setEnabled(item_->isEnabled());
    addTarget([this] { item_->perform(); }, UIControlEventTouchUpInside);
}

std::shared_ptr<UIView> UIBarButton::viewForItem(const std::shared_ptr<UIBarButtonItem>& item,
                                                 Place place, const UIColor& barColor) {
    if (item->kind() == UIBarButtonItem::Kind::CustomView)
        return item->customView();
    auto button = std::make_shared<UIBarButton>(item, place, barColor);
    button->setFrame({{}, button->sizeThatFits({})});
    return button;
}

void UIBarButton::itemChanged() {
    setEnabled(item_->isEnabled());
    setNeedsDisplay();
}

bool UIBarButton::isBordered() const {
    return place_ == Place::NavigationBar || item_->style() != UIBarButtonItemStyle::Plain;
}

double UIBarButton::contentWidth() const {
    if (item_->image())
        return item_->image()->size().width;
    if (!item_->title().empty())
        return std::ceil(sizeWithFont(item_->title(), titleFont()).width);
    return kSymbolWidth;
}

CGSize UIBarButton::sizeThatFits(CGSize) const {
    if (item_->width() > 0)
        return {item_->width(), kUIBarHeight};
    const double arrow = shape_ == UIBarDrawing::ButtonShape::Back ? kArrowPadding : 0;
    const double minimum = isBordered() ? kMinimumBodyWidth : kMinimumPlainWidth;
    return {std::max(minimum, contentWidth() + 2 * kPadding + arrow), kUIBarHeight};
}

void UIBarButton::drawRect(const CGRect& rect) {
    const double y = std::floor(rect.midY() - kBodyHeight / 2);
    CGRect body = CGRectMake(rect.minX(), y, rect.size.width, kBodyHeight);
    if (isBordered()) {
        const bool isDone = item_->style() == UIBarButtonItemStyle::Done;
        UIBarDrawing::drawButton(body, isDone ? UIBarDrawing::doneColor() : barColor_, shape_,
                                 isHighlighted());
    } else if (isHighlighted()) {
        UITouchGlow::draw({rect.midX(), rect.midY()}, kGlowRadius);
    }
    if (shape_ == UIBarDrawing::ButtonShape::Back)
        body = CGRectMake(body.minX() + kArrowPadding, y, body.size.width - kArrowPadding,
                          kBodyHeight);
    drawContent(body);
}

void UIBarButton::drawContent(const CGRect& body) const {
    CGContext& context = *UIGraphicsGetCurrentContext();
    const float alpha = isEnabled() ? 1 : kDisabledAlpha;
    const UIColor ink = UIColor::colorWithWhiteAlpha(1, alpha);
    const UIColor shade = UIColor::colorWithWhiteAlpha(0, 0.55F * alpha);
    const CGPoint center{body.midX(), body.midY() - 0.5};
    if (item_->image()) {
        const CGSize size = item_->image()->size();
        context.saveGState();
        context.setAlpha(alpha);
        item_->image()->drawAtPoint(
            {std::floor(center.x - size.width / 2), std::floor(center.y - size.height / 2)});
        context.restoreGState();
    } else if (!item_->title().empty()) {
        const double height = std::ceil(titleFont().lineHeight());
        const CGRect line = CGRectMake(body.minX() + 4, std::floor(center.y - height / 2),
                                       body.size.width - 8, height);
        shade.set();
        drawInRectWithFont(item_->title(), line.offsetBy(0, -1), titleFont(),
                           UILineBreakMode::TailTruncation, UITextAlignment::Center);
        ink.set();
        drawInRectWithFont(item_->title(), line, titleFont(), UILineBreakMode::TailTruncation,
                           UITextAlignment::Center);
    } else {
        UIBarSymbols::draw(item_->systemItem(), {center.x, center.y - 1}, shade);
        UIBarSymbols::draw(item_->systemItem(), center, ink);
    }
}

UIAccessibilityElement UIBarButton::accessibilityElement() const {
    UIAccessibilityElement element;
    element.role = UIAccessibilityRole::Button;
    element.label = item_->title().empty() ? item_->accessibilityLabel() : item_->title();
    element.enabled = isEnabled();
    return element;
}

}
