#include "platform/uikit/UITouchGlow.h"

namespace vistrel {

namespace {
constexpr double kRadius = 44;
}

UITouchGlow::UITouchGlow(CGPoint center)
    : UIView(CGRectMake(center.x - kRadius, center.y - kRadius, 2 * kRadius, 2 * kRadius)) {
    setOpaque(false);
    setUserInteractionEnabled(false);
}

void UITouchGlow::drawRect(const CGRect& rect) {
    draw({rect.midX(), rect.midY()}, kRadius);
}

void UITouchGlow::draw(CGPoint center, double radius) {
    const CGGradient light{{UIColor::colorWithWhiteAlpha(1, 0.75F),
                            UIColor::colorWithWhiteAlpha(1, 0.35F),
                            UIColor::colorWithWhiteAlpha(1, 0)},
                           {0, 0.35, 1}};
    UIGraphicsGetCurrentContext()->drawRadialGradient(light, center, radius);
}

}
