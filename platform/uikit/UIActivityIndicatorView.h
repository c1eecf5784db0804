#pragma once
#include "platform/uikit/UIView.h"

#include <memory>

namespace vistrel {
class NSTimer;

/// Numbers are the phone's.
enum class UIActivityIndicatorViewStyle { WhiteLarge = 0, White = 1 };

/// A spinning wheel: 20 x 20 points, large 37 x 37. Turns only while it is on screen, and hides
/// when it stops.
class UIActivityIndicatorView : public UIView {
public:
    explicit UIActivityIndicatorView(UIActivityIndicatorViewStyle style);
    ~UIActivityIndicatorView() override;

    void startAnimating();
    void stopAnimating();

    void didMoveToWindow() override;
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
    UIAccessibilityElement accessibilityElement() const override;

private:
    void updateTimer();

    bool animating_ = false;
    int step_ = 0;
    std::shared_ptr<NSTimer> timer_;
};

}
