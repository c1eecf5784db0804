#pragma once
#include "platform/foundation/NSRunLoop.h"
#include "platform/uikit/UIView.h"

namespace vistrel {

/// Where along the edge the bar lies, in points from the view's top.
struct UIScrollIndicatorSpan {
    double position = 0;
    double length = 0;
    friend bool operator==(const UIScrollIndicatorSpan&, const UIScrollIndicatorSpan&) = default;
};

/// The bar's place for an offset within minimum…maximum of a view `viewLength` long. Beyond the
/// ends the bar is squeezed against its end.
UIScrollIndicatorSpan scrollIndicatorSpan(double offset, double minimum, double maximum,
                                          double viewLength);

/// The bar that shows how far a list is scrolled. Its round ends are painted once; a change of
/// length only moves them.
class UIScrollIndicator : public UIView {
public:
    static constexpr double thickness = 6;

    UIScrollIndicator();
    ~UIScrollIndicator() override;

    void setColor(const UIColor& color);
    /// Visible at once, until fadeSoon.
    void show();
    void fadeSoon();
    void layoutSubviews() override;

private:
    class Cap;
    std::shared_ptr<Cap> top_;
    std::shared_ptr<Cap> bottom_;
    std::shared_ptr<UIView> middle_;
    NSRunLoop::Token fade_ = 0;
};

}
