#include "platform/uikit/UISlider.h"

#include "platform/graphics/CGContext.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIKey.h"
#include "platform/uikit/UITouch.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>

namespace vistrel {

namespace {

constexpr double kThumbSize = 23;
constexpr double kTrackHeight = 9;
constexpr double kTouchMargin = 15;
constexpr double kGrabMargin = 12;
constexpr float kKeySteps = 20;

double onPixel(double place) {
    const double scale = UIImage::screenScale();
    return std::round(place * scale) / scale;
}

}

/// One side's track over the whole length; a window shows the relevant part.
class UISlider::Track : public UIView {
public:
    explicit Track(const CGGradient& shade)
        : shade_(shade) {
        setOpaque(false);
    }
    void setImage(std::shared_ptr<const UIImage> image) {
        image_ = std::move(image);
        setNeedsDisplay();
    }
    double height() const { return image_ ? image_->size().height : kTrackHeight; }
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override {
        if (image_) {
            image_->drawInRect(rect);
            return;
        }
        CGContext& context = *UIGraphicsGetCurrentContext();
        context.setFillColor(UIColor::colorWithWhiteAlpha(0.45F, 1));
        context.beginPath();
        context.addRoundedRect(rect, rect.size.height / 2);
        context.fillPath();
        const CGRect inner = rect.insetBy(1, 1);
        context.saveGState();
        context.beginPath();
        context.addRoundedRect(inner, inner.size.height / 2);
        context.clipToPath();
        context.drawLinearGradient(shade_, {0, inner.minY()}, {0, inner.maxY()});
        context.restoreGState();
    }

private:
    CGGradient shade_;
    std::shared_ptr<const UIImage> image_;
};

class UISlider::Thumb : public UIView {
public:
    Thumb() { setOpaque(false); }
    void setImage(std::shared_ptr<const UIImage> image) {
        image_ = std::move(image);
        setNeedsDisplay();
    }
    CGSize size() const { return image_ ? image_->size() : CGSize{kThumbSize, kThumbSize}; }
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override {
        if (image_) {
            image_->drawInRect(rect);
            return;
        }
        CGContext& context = *UIGraphicsGetCurrentContext();
        context.setFillColor(UIColor::colorWithWhiteAlpha(0, 0.35F));
        context.fillEllipse(rect);
        const CGRect face = rect.insetBy(1, 1);
        context.beginPath();
        context.arc(face.midX(), face.midY(), face.size.width / 2, 0, 2 * std::numbers::pi);
        context.clipToPath();
        context.drawLinearGradient(
            {{UIColor::colorWithWhiteAlpha(0.78F, 1), UIColor::colorWithWhiteAlpha(1, 1)}, {}},
            {0, face.minY()}, {0, face.maxY()});
    }

private:
    std::shared_ptr<const UIImage> image_;
};

UISlider::UISlider(CGRect frame)
    : UIControl(frame)
    , minimumWindow_(std::make_shared<UIView>())
    , maximumWindow_(std::make_shared<UIView>())
    , minimumTrack_(std::make_shared<Track>(
          CGGradient{{{0.20F, 0.40F, 0.75F, 1}, {0.50F, 0.72F, 0.98F, 1}}, {}}))
    , maximumTrack_(std::make_shared<Track>(CGGradient{
          {UIColor::colorWithWhiteAlpha(0.70F, 1), UIColor::colorWithWhiteAlpha(1, 1)}, {}}))
    , thumb_(std::make_shared<Thumb>()) {
    setOpaque(false);
    for (const auto& window : {minimumWindow_, maximumWindow_}) {
        window->setOpaque(false);
        window->setClipsToBounds(true);
        window->setUserInteractionEnabled(false);
        window->setAutoresizesSubviews(false);
        addSubview(window);
    }
    minimumWindow_->addSubview(minimumTrack_);
    maximumWindow_->addSubview(maximumTrack_);
    thumb_->setUserInteractionEnabled(false);
    addSubview(thumb_);
}

UISlider::~UISlider() = default;

void UISlider::setValue(float value) {
    value_ = std::isnan(value) ? 0 : std::clamp(value, 0.0F, maximum_);
    // A player sets it a hundred times a second.
    if (thumbRect() != thumb_->frame())
        place();
}

void UISlider::setMaximumValue(float maximum) {
    maximum_ = std::max(maximum, 0.0F);
    setValue(value_);
}

void UISlider::setThumbImage(std::shared_ptr<const UIImage> image) {
    thumb_->setImage(std::move(image));
    place();
}

void UISlider::setMinimumTrackImage(std::shared_ptr<const UIImage> image) {
    minimumTrack_->setImage(std::move(image));
    place();
}

void UISlider::setMaximumTrackImage(std::shared_ptr<const UIImage> image) {
    maximumTrack_->setImage(std::move(image));
    place();
}

float UISlider::part() const {
    return maximum_ > 0 ? value_ / maximum_ : 0;
}

CGRect UISlider::thumbRect() const {
    const CGSize size = thumb_->size();
    const CGRect area = bounds();
    const double way = std::max(area.size.width - size.width, 0.0);
    return CGRectMake(onPixel(area.minX() + way * part()), onPixel(area.midY() - size.height / 2),
                      size.width, size.height);
}

void UISlider::layoutSubviews() {
    place();
}

/// Setting the same frame again composes nothing.
void UISlider::place() {
    const CGRect thumb = thumbRect();
    const CGRect area = bounds();
    const double middle = thumb.midX();
    thumb_->setFrame(thumb);
    const auto lay = [&](UIView& window, Track& track, double from, double to) {
        const double height = track.height();
        window.setFrame(
            CGRectMake(from, onPixel(area.midY() - height / 2), std::max(to - from, 0.0), height));
        track.setFrame(CGRectMake(area.minX() - from, 0, area.size.width, height));
    };
    lay(*minimumWindow_, *minimumTrack_, area.minX(), middle);
    lay(*maximumWindow_, *maximumTrack_, middle, area.maxX());
}

bool UISlider::pointInside(CGPoint point) const {
    const CGRect area = bounds();
    const double around = std::max((2 * kTouchMargin - area.size.height) / 2, 0.0);
    return area.insetBy(-4, -around).contains(point);
}

void UISlider::touchesBegan(const UITouch& touch) {
    const CGPoint at = touch.locationInView(*this);
    if (!isEnabled() || !thumbRect().insetBy(-kGrabMargin, -kGrabMargin).contains(at))
        return;
    tracking_ = true;
    grabOffset_ = at.x - thumbRect().midX();
    setHighlighted(true);
    sendActionsForControlEvents(UIControlEventTouchDown);
}

void UISlider::dragTo(const UITouch& touch) {
    const CGSize thumb = thumb_->size();
    const double way = bounds().size.width - thumb.width;
    const double left =
        touch.locationInView(*this).x - grabOffset_ - thumb.width / 2 - bounds().minX();
    const double share = way > 0 ? std::clamp(left / way, 0.0, 1.0) : 0;
    const float before = value_;
    setValue(static_cast<float>(share) * maximum_);
    if (value_ != before)
        sendActionsForControlEvents(UIControlEventValueChanged);
}

void UISlider::touchesMoved(const UITouch& touch) {
    if (tracking_)
        dragTo(touch);
}

void UISlider::touchesEnded(const UITouch& touch) {
    if (!tracking_)
        return;
    const auto hold = weak_from_this().lock();
    dragTo(touch);
    endTracking();
    sendActionsForControlEvents(UIControlEventTouchUpInside);
}

void UISlider::touchesCancelled(const UITouch&) {
    if (!tracking_)
        return;
    const auto hold = weak_from_this().lock();
    endTracking();
    sendActionsForControlEvents(UIControlEventTouchCancel);
}

void UISlider::endTracking() {
    tracking_ = false;
    setHighlighted(false);
}

bool UISlider::keyPressed(const UIKey& key) {
    const bool back = key.code == UIKeyCode::Left;
    if (!isEnabled() || (!back && key.code != UIKeyCode::Right))
        return false;
    const float step = maximum_ / kKeySteps;
    accessibilitySetValue(value_ + (back ? -step : step));
    return true;
}

void UISlider::accessibilitySetValue(double value) {
    const float before = value_;
    if (isEnabled())
        setValue(static_cast<float>(value));
    if (value_ != before)
        sendActionsForControlEvents(UIControlEventValueChanged);
}

UIAccessibilityElement UISlider::accessibilityElement() const {
    char percent[16];
    std::snprintf(percent, sizeof percent, "%.0f%%", static_cast<double>(part()) * 100);
    UIAccessibilityElement element = UIControl::accessibilityElement();
    element.role = UIAccessibilityRole::Slider;
    element.value = percent;
    element.enabled = isEnabled();
    element.range = {0, maximum_, value_};
    return element;
}

}
