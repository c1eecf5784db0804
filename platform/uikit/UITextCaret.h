#pragma once
#include "platform/uikit/UIView.h"

#include <memory>

namespace vistrel {
class NSTimer;

/// The blinking line at the insertion point.
class UITextCaret : public UIView {
public:
    UITextCaret();
    ~UITextCaret() override;

    /// Starts blinking, or hides. Moving it shows it for a full half period.
    void setActive(bool active);
    void moveTo(const CGRect& line);

private:
    void restart();

    bool active_ = false;
    std::shared_ptr<NSTimer> timer_;
};

}
