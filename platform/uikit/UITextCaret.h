#pragma once
#include "platform/uikit/UIView.h"

#include <memory>

namespace vistrel {
class NSTimer;

/// The blinking line where typed text goes.
class UITextCaret : public UIView {
public:
    UITextCaret();
    ~UITextCaret() override;

    /// Blinks from now on, or is not seen. Moving it shows it for a whole half period.
    void setActive(bool active);
    void moveTo(const CGRect& line);

private:
    void restart();

    bool active_ = false;
    std::shared_ptr<NSTimer> timer_;
};

}
