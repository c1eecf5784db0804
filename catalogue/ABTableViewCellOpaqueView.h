#pragma once
#include "platform/uikit/UIView.h"

namespace vistrel {

/// Delegates its drawing to the ABTableViewCellOpaque that contains it.
class ABTableViewCellOpaqueView : public UIView {
public:
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
};

}
