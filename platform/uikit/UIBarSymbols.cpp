#include "platform/uikit/UIBarSymbols.h"

#include "platform/foundation/NSBundle.h"
#include "platform/graphics/CGContext.h"

#include <cmath>
#include <numbers>

namespace vistrel::UIBarSymbols {

namespace {

constexpr double kPi = std::numbers::pi;

/// A ring, open at the upper right, with an arrow head on its end.
void drawRefresh(CGContext& context) {
    constexpr double kRadius = 7;
    constexpr double kStart = -0.02 * kPi;
    constexpr double kEnd = 1.55 * kPi;
    context.setLineWidth(2.8);
    context.beginPath();
    context.arc(0, 1, kRadius, kStart, kEnd);
    context.strokePath();
    context.saveGState();
    context.translate(kRadius * std::cos(kEnd), 1 + kRadius * std::sin(kEnd));
    context.rotate(kEnd + kPi / 2 + 0.25);
    context.beginPath();
    context.moveTo(7.2, 0);
    context.lineTo(-1.2, -5.2);
    context.lineTo(-1.2, 5.2);
    context.closePath();
    context.fillPath();
    context.restoreGState();
}

void drawStop(CGContext& context) {
    constexpr double kArm = 7.5;
    context.saveGState();
    context.rotate(kPi / 4);
    context.fillRect(CGRectMake(-kArm - 1, -1.7, 2 * kArm + 2, 3.4));
    context.fillRect(CGRectMake(-1.7, -kArm - 1, 3.4, kArm - 0.7));
    context.fillRect(CGRectMake(-1.7, 1.7, 3.4, kArm - 0.7));
    context.restoreGState();
}

void drawPlay(CGContext& context) {
    context.beginPath();
    context.moveTo(-6.5, -8);
    context.lineTo(8.5, 0);
    context.lineTo(-6.5, 8);
    context.closePath();
    context.fillPath();
}

void drawPause(CGContext& context) {
    context.fillRect(CGRectMake(-6, -8, 4, 16));
    context.fillRect(CGRectMake(2, -8, 4, 16));
}

void drawAdd(CGContext& context) {
    context.fillRect(CGRectMake(-8, -1.5, 16, 3));
    context.fillRect(CGRectMake(-1.5, -8, 3, 6.5));
    context.fillRect(CGRectMake(-1.5, 1.5, 3, 6.5));
}

/// A tray with an arrow pointing out to the right.
void drawAction(CGContext& context) {
    context.setLineWidth(2);
    context.beginPath();
    context.moveTo(-2, -4);
    context.lineTo(-9, -4);
    context.lineTo(-9, 8);
    context.lineTo(7, 8);
    context.lineTo(7, 4);
    context.strokePath();
    context.setLineWidth(2.6);
    context.beginPath();
    context.moveTo(-4.5, 4);
    context.curveTo(-4.5, -2, -1, -4, 4, -4);
    context.strokePath();
    context.beginPath();
    context.moveTo(3.5, -9);
    context.lineTo(10, -4);
    context.lineTo(3.5, 1);
    context.closePath();
    context.fillPath();
}

std::string key(UIBarButtonSystemItem item) {
    switch (item) {
    case UIBarButtonSystemItem::Done:
        return "Done";
    case UIBarButtonSystemItem::Cancel:
        return "Cancel";
    case UIBarButtonSystemItem::Edit:
        return "Edit";
    case UIBarButtonSystemItem::Save:
        return "Save";
    case UIBarButtonSystemItem::Add:
        return "Add";
    case UIBarButtonSystemItem::Action:
        return "Action";
    case UIBarButtonSystemItem::Refresh:
        return "Refresh";
    case UIBarButtonSystemItem::Stop:
        return "Stop";
    case UIBarButtonSystemItem::Play:
        return "Play";
    case UIBarButtonSystemItem::Pause:
        return "Pause";
    case UIBarButtonSystemItem::FlexibleSpace:
    case UIBarButtonSystemItem::FixedSpace:
        break;
    }
    return {};
}

}

bool isSymbol(UIBarButtonSystemItem item) {
    switch (item) {
    case UIBarButtonSystemItem::Add:
    case UIBarButtonSystemItem::Action:
    case UIBarButtonSystemItem::Refresh:
    case UIBarButtonSystemItem::Stop:
    case UIBarButtonSystemItem::Play:
    case UIBarButtonSystemItem::Pause:
        return true;
    default:
        return false;
    }
}

void draw(UIBarButtonSystemItem item, CGPoint center, const UIColor& color) {
    CGContext& context = *UIGraphicsGetCurrentContext();
    context.saveGState();
    context.translate(center.x, center.y);
    context.setFillColor(color);
    context.setStrokeColor(color);
    switch (item) {
    case UIBarButtonSystemItem::Refresh:
        drawRefresh(context);
        break;
    case UIBarButtonSystemItem::Stop:
        drawStop(context);
        break;
    case UIBarButtonSystemItem::Play:
        drawPlay(context);
        break;
    case UIBarButtonSystemItem::Pause:
        drawPause(context);
        break;
    case UIBarButtonSystemItem::Add:
        drawAdd(context);
        break;
    case UIBarButtonSystemItem::Action:
        drawAction(context);
        break;
    default:
        break;
    }
    context.restoreGState();
}

std::string name(UIBarButtonSystemItem item) {
    const std::string english = key(item);
    return english.empty() ? english : NSLocalizedString(english);
}

}
