#pragma once
#include "platform/uikit/UIView.h"

namespace vistrel {

/// The soft light under a finger, shown over a pressed button.
class UITouchGlow : public UIView {
public:
    explicit UITouchGlow(CGPoint center);

    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
    /// The light alone, into the current context.
    static void draw(CGPoint center, double radius);
};

}
