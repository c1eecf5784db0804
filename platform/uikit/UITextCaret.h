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

    /// Whether the text is hidden, as a password is. Before it is active.
    void setSecret(bool secret) { secret_ = secret; }
    /// Starts blinking, or hides. Moving it shows it for a full half period.
    void setActive(bool active);
    void moveTo(const CGRect& line);

private:
    void restart();

    bool active_ = false;
    bool secret_ = false;
    std::shared_ptr<NSTimer> timer_;
};

}
