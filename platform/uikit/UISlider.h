#pragma once
#include "platform/uikit/UIControl.h"

#include <memory>

namespace vistrel {
class UIImage;

/// A value between a minimum and a maximum, set by dragging its thumb.
class UISlider : public UIControl {
public:
    explicit UISlider(CGRect frame = {});

    float value() const { return value_; }
    /// Clamped. Redraws only when the thumb moves by a pixel. No event.
    void setValue(float value);
    float minimumValue() const { return minimum_; }
    void setMinimumValue(float minimum);
    float maximumValue() const { return maximum_; }
    void setMaximumValue(float maximum);
    void setThumbImage(std::shared_ptr<const UIImage> image);
    void setMinimumTrackImage(std::shared_ptr<const UIImage> image);
    void setMaximumTrackImage(std::shared_ptr<const UIImage> image);
    /// False: one event at the end of a drag.
    void setContinuous(bool continuous) { continuous_ = continuous; }
    bool isTracking() const { return tracking_; }

    CGRect thumbRect() const;
    void touchesBegan(const UITouch& touch) override;
    void touchesMoved(const UITouch& touch) override;
    void touchesEnded(const UITouch& touch) override;
    void touchesCancelled(const UITouch& touch) override;
    bool keyPressed(const UIKey& key) override;
    bool pointInside(CGPoint point) const override; ///< also around a flat track
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
    UIAccessibilityElement accessibilityElement() const override;

private:
    float value_ = 0;
    float minimum_ = 0;
    float maximum_ = 1;
    bool continuous_ = true;
    bool tracking_ = false;
    double grabOffset_ = 0;
    std::shared_ptr<const UIImage> thumb_;
    std::shared_ptr<const UIImage> minimumTrack_;
    std::shared_ptr<const UIImage> maximumTrack_;
};

}
