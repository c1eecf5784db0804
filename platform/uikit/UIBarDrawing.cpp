#include "platform/uikit/UIBarDrawing.h"

#include "platform/graphics/CGContext.h"

#include <algorithm>
#include <numbers>

namespace vistrel::UIBarDrawing {

namespace {

constexpr double kButtonRadius = 5;
constexpr double kArrowWidth = 12;

constexpr UIColor white(float alpha) {
    return UIColor::colorWithWhiteAlpha(1, alpha);
}

constexpr UIColor black(float alpha) {
    return UIColor::colorWithWhiteAlpha(0, alpha);
}

UIColor lighter(const UIColor& color, float amount) {
    return mix(color, UIColor::whiteColor().colorWithAlphaComponent(color.alpha), amount);
}

UIColor darker(const UIColor& color, float amount) {
    return mix(color, UIColor::blackColor().colorWithAlphaComponent(color.alpha), amount);
}

/// A body with a pointed left end and rounded corners.
void addBackPath(CGContext& context, const CGRect& rect) {
    const double left = rect.minX();
    const double top = rect.minY();
    const double bottom = rect.maxY();
    const double middle = rect.midY();
    const double shoulder = left + kArrowWidth;
    const double right = rect.maxX() - kButtonRadius;
    constexpr double kQuarter = std::numbers::pi / 2;
    context.moveTo(left + 0.6, middle - 0.8);
    context.curveTo(left + 4.5, middle - 5, left + 8, top, shoulder + 1.5, top);
    context.lineTo(right, top);
    context.arc(right, top + kButtonRadius, kButtonRadius, -kQuarter, 0);
    context.arc(right, bottom - kButtonRadius, kButtonRadius, 0, kQuarter);
    context.lineTo(shoulder + 1.5, bottom);
    context.curveTo(left + 8, bottom, left + 4.5, middle + 5, left + 0.6, middle + 0.8);
    context.curveTo(left, middle + 0.3, left, middle - 0.3, left + 0.6, middle - 0.8);
    context.closePath();
}

void addShape(CGContext& context, const CGRect& rect, ButtonShape shape) {
    context.beginPath();
    if (shape == ButtonShape::Back)
        addBackPath(context, rect);
    else
        context.addRoundedRect(rect, kButtonRadius);
}

void fillShape(CGContext& context, const CGRect& rect, ButtonShape shape, const UIColor& color) {
    context.setFillColor(color);
    addShape(context, rect, shape);
    context.fillPath();
}

}

UIColor mix(const UIColor& from, const UIColor& to, float amount) {
    const auto between = [amount](float a, float b) {
        return a + (b - a) * amount;
    };
    return {between(from.red, to.red), between(from.green, to.green), between(from.blue, to.blue),
            between(from.alpha, to.alpha)};
}

UIColor barColor(const std::optional<UIColor>& tint, UIBarStyle style) {
    if (tint)
        return *tint;
    switch (style) {
    case UIBarStyle::Black:
        return UIColor::colorWithWhiteAlpha(0.07F, 1);
    case UIBarStyle::BlackTranslucent:
        return UIColor::colorWithWhiteAlpha(0.05F, 0.6F);
    case UIBarStyle::Default:
        break;
    }
    return UIColor::colorWithRedGreenBlueAlpha(0.43F, 0.52F, 0.64F, 1);
}

UIColor doneColor() {
    return UIColor::colorWithRedGreenBlueAlpha(0.15F, 0.39F, 0.86F, 1);
}

void drawBar(const CGRect& rect, const UIColor& color, UIBarStyle style, BarEdge edge) {
    CGContext& context = *UIGraphicsGetCurrentContext();
    const bool isDark = style != UIBarStyle::Default;
    const float gloss = isDark ? 0.22F : 0.34F;
    const CGGradient body{{lighter(color, gloss), lighter(color, gloss * 0.42F),
                           lighter(color, 0.02F), darker(color, 0.16F)},
                          {0, 0.5, 0.5, 1}};
    context.drawLinearGradient(body, rect.origin, {rect.minX(), rect.maxY()});
    const double topLine = edge == BarEdge::Top ? rect.minY() + 1 : rect.minY();
    context.setFillColor(white(isDark ? 0.16F : 0.22F));
    context.fillRect(CGRectMake(rect.minX(), topLine, rect.size.width, 1));
    context.setFillColor(black(0.65F));
    const double dark = edge == BarEdge::Top ? rect.minY() : rect.maxY() - 1;
    context.fillRect(CGRectMake(rect.minX(), dark, rect.size.width, 1));
}

void drawButton(const CGRect& rect, const UIColor& color, ButtonShape shape, bool pressed) {
    CGContext& context = *UIGraphicsGetCurrentContext();
    const CGRect body = {rect.origin, {rect.size.width, rect.size.height - 1}};
    const UIColor solid = color.colorWithAlphaComponent(1);
    fillShape(context, body.offsetBy(0, 1), shape, white(0.2F));
    fillShape(context, body, shape, darker(solid, 0.72F).colorWithAlphaComponent(0.95F));
    const CGRect face = body.insetBy(1, 1);
    const UIColor base = pressed ? darker(solid, 0.45F) : solid;
    const CGGradient shading{
        {lighter(base, 0.26F), lighter(base, 0.15F), lighter(base, 0.04F), darker(base, 0.08F)},
        {0, 0.5, 0.5, 1}};
    context.saveGState();
    addShape(context, face, shape);
    context.clipToPath();
    context.drawLinearGradient(shading, face.origin, {face.minX(), face.maxY()});
    // The upper rim lies in the bar's shade.
    const CGGradient shade{{black(0.4F), black(0)}, {}};
    context.drawLinearGradient(shade, face.origin, {face.minX(), face.minY() + 3});
    context.restoreGState();
}

void drawGlossyButton(const CGRect& rect, const UIColor& color, double radius, bool pressed) {
    CGContext& context = *UIGraphicsGetCurrentContext();
    const UIColor base = pressed ? mix(color, UIColor::whiteColor(), 0.3F) : color;
    context.setFillColor(white(0.22F));
    context.beginPath();
    context.addRoundedRect({rect.origin, {rect.size.width, rect.size.height}}, radius);
    context.fillPath();
    const CGRect rim = {rect.origin, {rect.size.width, rect.size.height - 1}};
    context.setFillColor(black(0.7F));
    context.beginPath();
    context.addRoundedRect(rim, radius);
    context.fillPath();
    const CGRect face = rim.insetBy(1.5, 1.5);
    context.saveGState();
    context.beginPath();
    context.addRoundedRect(face, radius - 1.5);
    context.clipToPath();
    const CGGradient shading{
        {lighter(base, 0.52F), lighter(base, 0.24F), lighter(base, 0.03F), lighter(base, 0.14F)},
        {0, 0.5, 0.5, 1}};
    context.drawLinearGradient(shading, face.origin, {face.minX(), face.maxY()});
    context.restoreGState();
    context.setStrokeColor(white(0.28F));
    context.setLineWidth(1);
    context.beginPath();
    context.addRoundedRect(face.insetBy(0.5, 0.5), radius - 2);
    context.strokePath();
}

}
