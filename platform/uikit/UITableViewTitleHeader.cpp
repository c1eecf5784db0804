#include "platform/uikit/UITableViewTitleHeader.h"

#include "platform/graphics/CGContext.h"

namespace vistrel {

namespace {

const CGGradient kShade{{{0.48F, 0.52F, 0.58F, 0.9F}, {0.67F, 0.70F, 0.74F, 0.9F}}, {}};
constexpr UIColor kTopLine{0.65F, 0.68F, 0.73F, 0.9F};
constexpr UIColor kBottomLine{0.35F, 0.38F, 0.43F, 0.9F};
constexpr double kMargin = 12;

}

UITableViewTitleHeader::UITableViewTitleHeader(std::string title) {
    setUserInteractionEnabled(true);
    setFont(UIFont::boldSystemFontOfSize(18));
    setTextColor(UIColor::whiteColor());
    setShadowColor(UIColor::colorWithWhiteAlpha(0.25F, 0.8F));
    setShadowOffset({0, 1});
    setText(std::move(title));
}

void UITableViewTitleHeader::drawRect(const CGRect& rect) {
    CGContext& context = *UIGraphicsGetCurrentContext();
    context.drawLinearGradient(kShade, rect.origin, {rect.minX(), rect.maxY()});
    context.setFillColor(kTopLine);
    context.fillRect(CGRectMake(rect.minX(), rect.minY(), rect.size.width, 1));
    context.setFillColor(kBottomLine);
    context.fillRect(CGRectMake(rect.minX(), rect.maxY() - 1, rect.size.width, 1));
    UILabel::drawRect(CGRectMake(rect.minX() + kMargin, rect.minY(), rect.size.width - 2 * kMargin,
                                 rect.size.height));
}

}
