#pragma once
#include "platform/uikit/UIView.h"

#include <memory>

namespace vistrel {
class NSTimer;

/// Numbers are the phone's.
enum class UIActivityIndicatorViewStyle { WhiteLarge = 0, White = 1, Gray = 2 };

/// A spinning wheel: 20 x 20 points, large 37 x 37. Turns only while it is on screen.
class UIActivityIndicatorView : public UIView {
public:
    explicit UIActivityIndicatorView(UIActivityIndicatorViewStyle style);
    ~UIActivityIndicatorView() override;

    void startAnimating();
    void stopAnimating();
    bool isAnimating() const { return animating_; }
    void setHidesWhenStopped(bool hides);

    void didMoveToWindow() override;
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
    UIAccessibilityElement accessibilityElement() const override;

private:
    void updateTimer();

    UIActivityIndicatorViewStyle style_;
    bool animating_ = false;
    bool hidesWhenStopped_ = true;
    int step_ = 0;
    std::shared_ptr<NSTimer> timer_;
};

}
