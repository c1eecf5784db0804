#pragma once
#include "platform/uikit/UIView.h"

namespace vistrel {

/// The root of the view tree: black, with the windows and the status bar as its subviews.
class UIScreenView : public UIView {
public:
    explicit UIScreenView(CGRect frame);
    /// Releases every window. From now on no change requests a frame.
    void turnOff();

protected:
    bool isScreen() const override { return on_; }

private:
    bool on_ = true;
};

}
