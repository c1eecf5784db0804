#pragma once
#include "platform/uikit/UIView.h"

namespace vistrel {

/// Hands its drawing back to the OvoTableViewCell that it lies in.
class OvoTableViewCellView : public UIView {
public:
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
};

}
