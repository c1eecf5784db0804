#pragma once
#include "platform/uikit/UITouch.h"
#include "platform/uikit/UIView.h"

#include <memory>
#include <optional>

namespace vistrel {

/// Hands touches and keys to views: hit test, one owner for a touch, capture by scrolling
/// ancestors, cancellation, focus.
class UIEventDispatcher {
public:
    /// `root` is the screen's root view; it outlives the dispatcher.
    explicit UIEventDispatcher(UIView& root);

    /// Whether a touch that begins there goes to foreign content, which hears of it from the system
    /// and not from here; the view that shows the content is told with touchWillBeginInside.
    bool touchBeginsInForeignContent(CGPoint location, double timestamp);
    /// One step of a touch, in screen points. A second touch while one is down is ignored.
    void sendTouch(UITouchPhase phase, CGPoint location, double timestamp);
    /// Wheel or touchpad movement in points; goes to the innermost scroll view under the point that
    /// can scroll so.
    void sendScroll(CGPoint location, double dx, double dy, double timestamp);
    /// First to the focused view and its superviews, when they are in the front window; then to
    /// what takes keys without focus in that window, front to back, the deepest first; Escape goes
    /// to the controllers on that way, but never past the screen on top. Tab moves the focus. True
    /// when one used it.
    bool sendKey(const UIKey& key);

    /// The view that gets keys; null for none.
    std::shared_ptr<UIView> firstResponder() const { return firstResponder_.lock(); }
    void setFirstResponder(const std::shared_ptr<UIView>& view);
    /// The view that has the touch now; null when no finger is down.
    std::shared_ptr<UIView> touchOwner() const { return touchOwner_.lock(); }
    /// The owner hears touchesCancelled and the rest of the touch goes nowhere; for alerts that
    /// come up under a finger.
    void cancelTouch();
    /// New touches and keys are ignored for as long as somebody holds what this returns.
    std::shared_ptr<const void> ignoreInteraction() const { return pause_; }
    bool isIgnoringInteraction() const { return pause_.use_count() > 1; }

private:
    void began(CGPoint location, double timestamp);
    void moved();
    void ended(UITouchPhase phase);
    void offerCapture();
    void countTap(CGPoint location, double timestamp);
    bool ownerIsGone() const;
    bool moveFocus(UIView& window, bool backward);

    UIView& root_;
    std::optional<UITouch> touch_;
    std::weak_ptr<UIView> touchOwner_;
    std::weak_ptr<UIView> firstResponder_;
    double lastTapTime_ = -1;
    CGPoint lastTapLocation_;
    int tapCount_ = 0;
    std::shared_ptr<const void> pause_ = std::make_shared<char>();
};

}
