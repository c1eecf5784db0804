#pragma once
#include "platform/uikit/UIView.h"

#include <functional>
#include <utility>
#include <vector>

namespace vistrel {

enum class UIControlState { Normal = 0, Highlighted = 1, Disabled = 2, Selected = 4 };
/// Values are the phone's; combined with |.
enum UIControlEvents : unsigned {
    UIControlEventTouchDown = 1,
    UIControlEventTouchUpInside = 64,
    UIControlEventTouchUpOutside = 128,
    UIControlEventTouchCancel = 256,
    UIControlEventValueChanged = 4096,
    UIControlEventEditingChanged = 131072,
    UIControlEventEditingDidEndOnExit = 524288,
};

/// A view that turns touches into events.
class UIControl : public UIView {
public:
    explicit UIControl(CGRect frame = {});

    void addTarget(std::function<void()> action, unsigned controlEvents);
    void sendActionsForControlEvents(unsigned controlEvents);

    bool isEnabled() const { return enabled_; }
    virtual void setEnabled(bool enabled);
    bool isHighlighted() const { return highlighted_; }
    virtual void setHighlighted(bool highlighted);
    bool isSelected() const { return selected_; }
    virtual void setSelected(bool selected);

    void touchesBegan(const UITouch& touch) override;
    void touchesMoved(const UITouch& touch) override;
    void touchesEnded(const UITouch& touch) override;
    void touchesCancelled(const UITouch& touch) override;
    bool keyPressed(const UIKey& key) override;
    bool canBecomeFirstResponder() const override { return enabled_; }

private:
    std::vector<std::pair<unsigned, std::function<void()>>> targets_;
    bool enabled_ = true;
    bool highlighted_ = false;
    bool selected_ = false;
    bool tracking_ = false; ///< a touch that began here is down
};

}
