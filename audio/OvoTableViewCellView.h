#pragma once
#include "platform/uikit/UIView.h"

namespace vistrel {

/// Lets the OvoTableViewCell that contains it draw its content.
class OvoTableViewCellView : public UIView {
public:
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
};

}
