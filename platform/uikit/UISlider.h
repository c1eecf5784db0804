#pragma once
#include "platform/uikit/UIControl.h"

#include <memory>

namespace vistrel {
class UIImage;

/// A value between a minimum and a maximum, set by dragging its thumb. A new value only moves
/// finished pictures; nothing is painted for it.
class UISlider : public UIControl {
public:
    explicit UISlider(CGRect frame = {});
    ~UISlider() override;

    float value() const { return value_; }
    /// From 0 to the maximum; NaN counts as 0. Recomposes only when the thumb moves by a pixel.
    /// Sends no event.
    void setValue(float value);
    float maximumValue() const { return maximum_; }
    void setMaximumValue(float maximum);
    /// Null: the default.
    void setThumbImage(std::shared_ptr<const UIImage> image);
    void setMinimumTrackImage(std::shared_ptr<const UIImage> image);
    void setMaximumTrackImage(std::shared_ptr<const UIImage> image);
    bool isTracking() const { return tracking_; }

    /// May extend above and below a flat slider.
    CGRect thumbRect() const;
    void layoutSubviews() override;
    void touchesBegan(const UITouch& touch) override;
    void touchesMoved(const UITouch& touch) override;
    void touchesEnded(const UITouch& touch) override;
    void touchesCancelled(const UITouch& touch) override;
    /// A touch on a slider never becomes a scroll.
    bool shouldCaptureTouch(const UITouch&) override { return false; }
    bool keyPressed(const UIKey& key) override;
    bool pointInside(CGPoint point) const override; ///< also around a flat track
    UIAccessibilityElement accessibilityElement() const override;
    void accessibilitySetValue(double value) override;

private:
    class Thumb;
    class Track;

    float part() const;
    void dragTo(const UITouch& touch);
    void endTracking();
    void place();

    float value_ = 0;
    float maximum_ = 1;
    bool tracking_ = false;
    double grabOffset_ = 0;
    std::shared_ptr<UIView> minimumWindow_; ///< shows the left track up to the thumb's middle
    std::shared_ptr<UIView> maximumWindow_; ///< shows the right track from there on
    std::shared_ptr<Track> minimumTrack_;
    std::shared_ptr<Track> maximumTrack_;
    std::shared_ptr<Thumb> thumb_;
};

}
