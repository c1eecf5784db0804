#pragma once
#include "platform/uikit/UIView.h"

namespace vistrel {

/// Delegates its drawing to the ABTableViewCell that contains it.
class ABTableViewCellView : public UIView {
public:
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
};

}
