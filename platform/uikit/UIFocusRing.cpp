#include "platform/uikit/UIFocusRing.h"

#include "platform/uikit/UIScreen.h"

namespace vistrel {

namespace {

constexpr double kReach = 4; ///< beyond the surrounded view
constexpr double kRadius = 7;

struct Line {
    double inset;
    double width;
    UIColor color;
};
/// A soft glow, the ring, and a light line inside that sets it off from a selected row.
constexpr Line kLines[] = {
    {2, 4, UIColor::colorWithRedGreenBlueAlpha(0.25F, 0.6F, 1, 0.45F)},
    {2.5, 2, UIColor::colorWithRedGreenBlueAlpha(0.1F, 0.45F, 0.95F, 1)},
    {4, 1, UIColor::colorWithWhiteAlpha(1, 0.9F)},
};

/// In screen points, where animations show it at this moment.
CGRect shownPart(const UIView& part) {
    CGRect rect = part.presentationState().bounds;
    for (const UIView* view = &part; view->superview(); view = view->superview()) {
        if (view->clipsToBounds())
            rect = CGRectIntersection(rect, view->presentationState().bounds);
        rect = view->presentationState().toSuperview().apply(rect);
    }
    return rect;
}

}

UIFocusRing::UIFocusRing() {
    UIView::setOpaque(false);
}

bool UIFocusRing::surround(const UIView& part) {
    const CGRect shown = shownPart(part);
    if (shown.isEmpty())
        return false;
    setFrame(CGRectIntersection(shown.insetBy(-kReach, -kReach), UIScreen::mainScreen().bounds()));
    return !frame().isEmpty();
}

void UIFocusRing::drawRect(const CGRect& rect) {
    CGContext& context = *UIGraphicsGetCurrentContext();
    for (const Line& line : kLines) {
        context.setStrokeColor(line.color);
        context.setLineWidth(line.width);
        context.beginPath();
        context.addRoundedRect(rect.insetBy(line.inset, line.inset), kRadius - line.inset);
        context.strokePath();
    }
}

}
