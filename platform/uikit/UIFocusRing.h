#pragma once
#include "platform/uikit/UIView.h"

namespace vistrel {

/// The ring around the view that has the keyboard focus. It is drawn over the finished screen and
/// is not in the view tree.
class UIFocusRing : public UIView {
public:
    UIFocusRing();
    /// Surrounds what is shown of `part` now; false when nothing of it is.
    bool surround(const UIView& part);

    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
};

}
