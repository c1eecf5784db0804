#include "platform/media/MPMovieTransportButton.h"

#include "platform/foundation/NSBundle.h"

#include <utility>

namespace vistrel {

MPMovieTransportButton::MPMovieTransportButton(CGRect frame)
    : UIControl(frame) {
    setOpaque(false);
}

void MPMovieTransportButton::setPlaying(bool playing) {
    if (std::exchange(playing_, playing) != playing)
        setNeedsDisplay();
}

void MPMovieTransportButton::setHighlighted(bool highlighted) {
    if (highlighted != isHighlighted())
        setNeedsDisplay();
    UIControl::setHighlighted(highlighted);
}

void MPMovieTransportButton::drawRect(const CGRect& rect) {
    CGContext& context = *UIGraphicsGetCurrentContext();
    context.setFillColor(UIColor::colorWithWhiteAlpha(isHighlighted() ? 0.6F : 1, 1));
    const double height = rect.size.height * 0.55;
    const double top = (rect.size.height - height) / 2;
    if (playing_) {
        const double bar = height * 0.3;
        const double middle = rect.size.width / 2;
        context.fillRect(CGRectMake(middle - bar * 1.4, top, bar, height));
        context.fillRect(CGRectMake(middle + bar * 0.4, top, bar, height));
        return;
    }
    const double left = (rect.size.width - height * 0.85) / 2;
    context.beginPath();
    context.moveTo(left, top);
    context.lineTo(left + height * 0.85, top + height / 2);
    context.lineTo(left, top + height);
    context.closePath();
    context.fillPath();
}

UIAccessibilityElement MPMovieTransportButton::accessibilityElement() const {
    return {UIAccessibilityRole::Button,
            NSLocalizedString(playing_ ? "Pause" : "Play"),
            {},
            isEnabled()};
}

}
