#pragma once
#include "platform/uikit/UIView.h"

namespace vistrel {

enum class UIProgressViewStyle { Default, Bar };

/// The progress of a task, 0 to 1.
class UIProgressView : public UIView {
public:
    explicit UIProgressView(CGRect frame = {},
                            UIProgressViewStyle style = UIProgressViewStyle::Default);

    /// The clamped value.
    float progress() const { return progress_; }
    /// Clamped to 0..1; NaN counts as 0. Repaints only when the bar grows by a pixel.
    void setProgress(float progress);

    CGSize sizeThatFits(CGSize size) const override; ///< 9 points high
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
    UIAccessibilityElement accessibilityElement() const override;

private:
    double filledWidth() const;

    float progress_ = 0;
    UIProgressViewStyle style_;
};

}
