#include "platform/uikit/UIProgressView.h"

#include "platform/graphics/CGContext.h"
#include "platform/graphics/UIImage.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace vistrel {

namespace {

constexpr double kHeight = 9;

CGGradient trackShade(UIProgressViewStyle style) {
    if (style == UIProgressViewStyle::Bar)
        return {{{0.25F, 0.27F, 0.31F, 1}, {0.48F, 0.51F, 0.57F, 1}}, {}};
    return {{{0.72F, 0.74F, 0.77F, 1}, {0.98F, 0.98F, 1, 1}}, {}};
}

CGGradient fillShade(UIProgressViewStyle style) {
    if (style == UIProgressViewStyle::Bar)
        return {{{0.97F, 0.98F, 1, 1}, {0.75F, 0.79F, 0.85F, 1}}, {}};
    return {{{0.56F, 0.74F, 0.96F, 1}, {0.22F, 0.47F, 0.86F, 1}, {0.30F, 0.58F, 0.95F, 1}}, {}};
}

void fillCapsule(CGContext& context, const CGRect& rect, const CGGradient& shade) {
    context.saveGState();
    context.beginPath();
    context.addRoundedRect(rect, rect.size.height / 2);
    context.clipToPath();
    context.drawLinearGradient(shade, {0, rect.minY()}, {0, rect.maxY()});
    context.restoreGState();
}

}

UIProgressView::UIProgressView(CGRect frame, UIProgressViewStyle style)
    : UIView(frame)
    , style_(style) {
    setOpaque(false);
    setUserInteractionEnabled(false);
}

double UIProgressView::filledWidth() const {
    const double scale = UIImage::screenScale();
    const double whole = std::max(bounds().size.width - 2, 0.0);
    return std::round(whole * static_cast<double>(progress_) * scale) / scale;
}

void UIProgressView::setProgress(float progress) {
    const double before = filledWidth();
    progress_ = std::isnan(progress) ? 0 : std::clamp(progress, 0.0F, 1.0F);
    if (filledWidth() != before)
        setNeedsDisplay();
}

CGSize UIProgressView::sizeThatFits(CGSize size) const {
    return {size.width, kHeight};
}

void UIProgressView::drawRect(const CGRect& rect) {
    CGContext& context = *UIGraphicsGetCurrentContext();
    const double height = std::min(kHeight, rect.size.height);
    const CGRect bar =
        CGRectMake(rect.minX(), std::round(rect.midY() - height / 2), rect.size.width, height);
    context.setFillColor(UIColor::colorWithRedGreenBlueAlpha(0.33F, 0.37F, 0.44F, 1));
    context.beginPath();
    context.addRoundedRect(bar, height / 2);
    context.fillPath();
    const CGRect inner = bar.insetBy(1, 1);
    fillCapsule(context, inner, trackShade(style_));
    const double width = filledWidth();
    if (width <= 0)
        return;
    // A short fill is cut off straight rather than squeezed into a small capsule.
    context.saveGState();
    context.clipToRect(CGRectMake(inner.minX(), inner.minY(), width, inner.size.height));
    fillCapsule(context,
                CGRectMake(inner.minX(), inner.minY(), std::max(width, inner.size.height),
                           inner.size.height),
                fillShade(style_));
    context.restoreGState();
}

UIAccessibilityElement UIProgressView::accessibilityElement() const {
    char percent[16];
    std::snprintf(percent, sizeof percent, "%.0f%%", static_cast<double>(progress_) * 100);
    return {UIAccessibilityRole::ProgressBar, UIView::accessibilityElement().label, percent, true,
            UIAccessibilityRange{0, 1, progress_}};
}

}
