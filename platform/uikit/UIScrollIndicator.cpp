#include "platform/uikit/UIScrollIndicator.h"

#include "platform/foundation/Weakly.h"
#include "platform/uikit/UIViewAnimation.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vistrel {

namespace {

constexpr double kMargin = 2;
constexpr double kLeastLength = 36;
constexpr double kSqueezedLength = UIScrollIndicator::thickness;
constexpr double kFadeDelay = 0.35;
constexpr double kFadeDuration = 0.25;

}

UIScrollIndicatorSpan scrollIndicatorSpan(double offset, double minimum, double maximum,
                                          double viewLength) {
    const double track = std::max(viewLength - 2 * kMargin, kSqueezedLength);
    const double way = std::max(maximum - minimum, 0.0);
    const double whole = std::max(track * viewLength / (way + viewLength), kLeastLength);
    const double inside = std::clamp(offset, minimum, minimum + way);
    const double squeeze = std::abs(offset - inside);
    const double length = std::round(std::clamp(whole - squeeze, kSqueezedLength, track));
    const double part = way > 0 ? (inside - minimum) / way : (offset > inside ? 1 : 0);
    return {kMargin + std::round(part * (track - length)), length};
}

/// One round end; the bottom is the top flipped.
class UIScrollIndicator::Cap : public UIView {
public:
    explicit Cap(bool top)
        : top_(top) {
        setOpaque(false);
        setFrame(CGRectMake(0, 0, thickness, thickness / 2));
    }
    void setColor(const UIColor& color) {
        color_ = color;
        setNeedsDisplay();
    }
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect&) override {
        const double radius = thickness / 2;
        CGContext& context = *UIGraphicsGetCurrentContext();
        context.setFillColor(color_);
        context.fillEllipse(CGRectMake(0, top_ ? 0 : -radius, thickness, thickness));
    }

private:
    bool top_;
    UIColor color_;
};

UIScrollIndicator::UIScrollIndicator()
    : top_(std::make_shared<Cap>(true))
    , bottom_(std::make_shared<Cap>(false))
    , middle_(std::make_shared<UIView>()) {
    setOpaque(false);
    setUserInteractionEnabled(false);
    setAlpha(0);
    addSubview(top_);
    addSubview(middle_);
    addSubview(bottom_);
}

UIScrollIndicator::~UIScrollIndicator() {
    NSRunLoop::cancelPerform(fade_);
}

void UIScrollIndicator::setColor(const UIColor& color) {
    top_->setColor(color);
    bottom_->setColor(color);
    middle_->setBackgroundColor(color);
}

void UIScrollIndicator::show() {
    NSRunLoop::cancelPerform(fade_);
    fade_ = 0;
    if (alpha() < 1 || presentationState().alpha < 1)
        UIViewAnimation::withoutAnimation([this] { setAlpha(1); });
}

void UIScrollIndicator::fadeSoon() {
    NSRunLoop::cancelPerform(fade_);
    fade_ = NSRunLoop::performAfterDelay(kFadeDelay, weakly(this, [](UIScrollIndicator& self) {
                                             self.fade_ = 0;
                                             UIViewAnimation::beginAnimations();
                                             UIViewAnimation::setAnimationDuration(kFadeDuration);
                                             self.setAlpha(0);
                                             UIViewAnimation::commitAnimations();
                                         }));
}

void UIScrollIndicator::layoutSubviews() {
    const double radius = thickness / 2;
    const double height = bounds().size.height;
    middle_->setFrame(CGRectMake(0, radius, thickness, std::max(height - thickness, 0.0)));
    bottom_->setFrame(CGRectMake(0, height - radius, thickness, radius));
}

}
