#pragma once
#include "platform/uikit/UIView.h"

namespace vistrel {

/// The ring around what the keyboard is on. It is drawn over the finished screen and is no part of
/// the view tree.
class UIFocusRing : public UIView {
public:
    UIFocusRing();
    /// Surrounds what is shown of `part` now; false when nothing of it is.
    bool surround(const UIView& part);

    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
};

}
