#pragma once
#include "platform/uikit/UIView.h"

namespace vistrel {

/// The root of the view tree: black, with the windows and the status bar as its subviews.
class UIScreenView : public UIView {
public:
    explicit UIScreenView(CGRect frame);
    /// Lets every window go. What they change from now on asks for no frames.
    void turnOff();

protected:
    bool isScreen() const override { return on_; }

private:
    bool on_ = true;
};

}
