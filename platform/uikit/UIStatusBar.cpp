#include "platform/uikit/UIStatusBar.h"

#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSRunLoop.h"
#include "platform/graphics/CGContext.h"
#include "platform/graphics/UIStringDrawing.h"

#include <cmath>
#include <ctime>

namespace vistrel {

namespace {

constexpr double kMinute = 60;
constexpr double kSpinnerStep = 1.0 / 12;
constexpr int kSpokes = 12;
constexpr double kSpinnerLeft = 8;

void drawSpinner(CGContext& context, CGPoint center, int step) {
    context.setLineWidth(1.25);
    for (int i = 0; i < kSpokes; ++i) {
        const double angle = 2 * M_PI * i / kSpokes;
        const int behind = ((step - i) % kSpokes + kSpokes) % kSpokes;
        const float strength = 1.0F - 0.8F * static_cast<float>(behind) / kSpokes;
        context.setStrokeColor(UIColor::colorWithWhiteAlpha(0.92F, strength));
        context.beginPath();
        context.moveTo(center.x + 2.6 * std::sin(angle), center.y - 2.6 * std::cos(angle));
        context.lineTo(center.x + 5.4 * std::sin(angle), center.y - 5.4 * std::cos(angle));
        context.strokePath();
    }
}

}

UIStatusBar::UIStatusBar()
    : UIView(CGRectMake(0, 0, 320, 20)) {
    setUserInteractionEnabled(false);
}

UIStatusBar::~UIStatusBar() {
    NSRunLoop::cancelPerform(clockToken_);
    NSRunLoop::cancelPerform(spinnerToken_);
}

void UIStatusBar::setNetworkActivity(bool active) {
    if (networkActivity_ == active)
        return;
    networkActivity_ = active;
    setNeedsDisplay();
    if (active)
        scheduleSpinner();
    else
        NSRunLoop::cancelPerform(spinnerToken_);
}

void UIStatusBar::scheduleSpinner() {
    spinnerToken_ = NSRunLoop::performAfterDelay(
        kSpinnerStep,
        [this] {
            ++spinnerStep_;
            if (isOnScreen())
                setNeedsDisplay();
            scheduleSpinner();
        });
}

void UIStatusBar::updateClock() {
    const auto now = static_cast<std::time_t>(std::floor(NSRunLoop::wallClock()));
    std::tm local = {};
    localtime_r(&now, &local);
    char text[16];
    std::strftime(text, sizeof text, "%H:%M", &local);
    if (clockText_ != text) {
        clockText_ = text;
        setNeedsDisplay();
    }
    scheduleClock();
}

void UIStatusBar::scheduleClock() {
    NSRunLoop::cancelPerform(clockToken_);
    const double now = NSRunLoop::wallClock();
    const double untilNextMinute = kMinute - std::fmod(now, kMinute);
    clockToken_ = NSRunLoop::performAfterDelay(untilNextMinute, [this] { updateClock(); });
}

void UIStatusBar::drawRect(const CGRect& rect) {
    auto& context = *UIGraphicsGetCurrentContext();
    const CGGradient shade = {{UIColor{0.30F, 0.33F, 0.38F, 1}, UIColor{0.13F, 0.15F, 0.18F, 1},
                               UIColor{0.06F, 0.07F, 0.09F, 1}, UIColor{0, 0, 0, 1}},
                              {0, 0.5, 0.5, 1}};
    context.drawLinearGradient(shade, rect.origin, {rect.minX(), rect.maxY()});
    context.setFillColor(UIColor::colorWithWhiteAlpha(1, 0.18F));
    context.fillRect(CGRectMake(rect.minX(), rect.minY(), rect.size.width, 0.5));
    const auto font = UIFont::boldSystemFontOfSize(13);
    const double top = rect.midY() - font.lineHeight() / 2;
    context.setFillColor(UIColor::colorWithWhiteAlpha(0.92F, 1));
    drawInRectWithFont(clockText_, CGRectMake(0, top, rect.size.width, font.lineHeight()), font,
                       UILineBreakMode::Clip, UITextAlignment::Center);
    if (networkActivity_)
        drawSpinner(context, {rect.minX() + kSpinnerLeft + 6, rect.midY()}, spinnerStep_);
}

UIAccessibilityElement UIStatusBar::accessibilityElement() const {
    return {UIAccessibilityRole::Label, clockText_,
            networkActivity_ ? NSLocalizedString("network activity") : std::string(), true};
}

}
