#include "platform/uikit/UIActivityIndicatorView.h"

#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSTimer.h"

#include <algorithm>
#include <numbers>

namespace vistrel {

namespace {

constexpr int kSpokes = 12;
constexpr double kStepSeconds = 1.0 / kSpokes;

double side(UIActivityIndicatorViewStyle style) {
    return style == UIActivityIndicatorViewStyle::WhiteLarge ? 37 : 20;
}

}

UIActivityIndicatorView::UIActivityIndicatorView(UIActivityIndicatorViewStyle style)
    : UIView(CGRectMake(0, 0, side(style), side(style))) {
    setOpaque(false);
    setUserInteractionEnabled(false);
    setHidden(true);
}

UIActivityIndicatorView::~UIActivityIndicatorView() {
    if (timer_)
        timer_->invalidate();
}

void UIActivityIndicatorView::startAnimating() {
    animating_ = true;
    setHidden(false);
    updateTimer();
}

void UIActivityIndicatorView::stopAnimating() {
    animating_ = false;
    setHidden(true);
    updateTimer();
}

void UIActivityIndicatorView::didMoveToWindow() {
    updateTimer();
}

void UIActivityIndicatorView::updateTimer() {
    const bool turns = animating_ && window() != nullptr;
    if (turns == (timer_ != nullptr))
        return;
    if (!turns) {
        timer_->invalidate();
        timer_ = nullptr;
        return;
    }
    timer_ = NSTimer::scheduledTimer(kStepSeconds, NSTimer::Repeats::Yes, [this] {
        step_ = (step_ + 1) % kSpokes;
        setNeedsDisplay();
    });
}

UIAccessibilityElement UIActivityIndicatorView::accessibilityElement() const {
    UIAccessibilityElement element = UIView::accessibilityElement();
    element.role = UIAccessibilityRole::ProgressBar;
    if (element.label.empty())
        element.label = NSLocalizedString("In progress");
    return element;
}

void UIActivityIndicatorView::drawRect(const CGRect& rect) {
    CGContext& context = *UIGraphicsGetCurrentContext();
    const double radius = std::min(rect.size.width, rect.size.height) / 2;
    const double inner = radius * 0.5;
    const double length = radius * 0.44;
    const double width = radius * 0.19;
    context.saveGState();
    context.translate(rect.midX(), rect.midY());
    context.rotate(2 * std::numbers::pi * step_ / kSpokes);
    for (int spoke = 0; spoke < kSpokes; ++spoke) {
        // The spoke before the leading one is the brightest; those behind it fade.
        const double age = static_cast<double>(kSpokes - 1 - spoke) / (kSpokes - 1);
        const auto alpha = static_cast<float>(1.0 - 0.75 * age);
        context.setFillColor(UIColor::colorWithWhiteAlpha(1, alpha));
        context.beginPath();
        context.addRoundedRect(CGRectMake(-width / 2, -inner - length, width, length), width / 2);
        context.fillPath();
        context.rotate(2 * std::numbers::pi / kSpokes);
    }
    context.restoreGState();
}

}
