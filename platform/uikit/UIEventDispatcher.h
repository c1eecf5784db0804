#pragma once
#include "platform/uikit/UITouch.h"
#include "platform/uikit/UIView.h"

#include <memory>
#include <optional>
#include <string>

namespace vistrel {
enum class UICommand;

/// Delivers touches and keys to views: hit test, one owner per touch, capture by scrolling
/// ancestors, cancellation, focus.
class UIEventDispatcher {
public:
    /// `root` is the screen's root view; it outlives the dispatcher.
    explicit UIEventDispatcher(UIView& root);

    /// Whether a touch that begins there goes to foreign content, which gets it from the toolkit
    /// directly; the view that shows the content receives touchWillBeginInside.
    bool touchBeginsInForeignContent(CGPoint location, double timestamp);
    /// One step of a touch, in screen points. A second touch while one is down is ignored.
    void sendTouch(UITouchPhase phase, CGPoint location, double timestamp);
    /// Wheel or touchpad movement in points; goes to the innermost scroll view under the point that
    /// can scroll that way.
    void sendScroll(CGPoint location, double dx, double dy, double timestamp);
    /// The mouse's second button; goes to the innermost view under the point that has a menu. True
    /// when it was used.
    bool sendMenuRequest(CGPoint location);
    /// The mouse leaves the window with its button down. Returns the device path of the file that
    /// it takes along; the touch is cancelled then. Nothing when it takes none.
    std::optional<std::string> dragFileOut();
    /// Shortcuts become commands. Other keys go first to the focused view and its superviews, when
    /// they are in the front window; then to the views of that window that take keys without focus,
    /// front to back, deepest first. Escape goes to the controllers on that path, but never past
    /// the screen on top. Tab, and arrows that nothing else uses, move the focus. True when the key
    /// was used.
    bool sendKey(const UIKey& key);
    /// To the screens of the front window, innermost first; then to the display's window. True when
    /// it was used.
    bool sendCommand(UICommand command);

    /// The view that gets keys; null for none.
    std::shared_ptr<UIView> firstResponder() const { return firstResponder_.lock(); }
    void setFirstResponder(const std::shared_ptr<UIView>& view);
    /// Tab: the next view in reading order, or the previous one, gets the keys and is shown to have
    /// them. False when there is none.
    bool moveFocus(bool backward);
    /// Whether the focus is shown: once a key has moved it, until the next touch.
    bool showsFocus() const { return showsFocus_; }
    /// What keys act on; null for nothing.
    std::shared_ptr<UIView> focusedPart() const;
    /// The view that has the touch now; null when no finger is down.
    std::shared_ptr<UIView> touchOwner() const { return touchOwner_.lock(); }
    /// The owner gets touchesCancelled and the rest of the touch is ignored; for alerts that
    /// appear under a finger.
    void cancelTouch();
    /// New touches and keys are ignored while the returned object is held.
    std::shared_ptr<const void> ignoreInteraction() const { return pause_; }
    bool isIgnoringInteraction() const { return pause_.use_count() > 1; }

private:
    void began(CGPoint location, double timestamp);
    void moved();
    void ended(UITouchPhase phase);
    void offerCapture();
    void countTap(CGPoint location, double timestamp);
    bool ownerIsGone() const;
    std::shared_ptr<UIView> reachableResponder() const;
    bool offerToFocused(const UIKey& key);
    bool offerToUnfocused(UIView& window, const UIKey& key);
    void showFocus(bool shows);

    UIView& root_;
    std::optional<UITouch> touch_;
    std::weak_ptr<UIView> touchOwner_;
    std::weak_ptr<UIView> firstResponder_;
    double lastTapTime_ = -1;
    CGPoint lastTapLocation_;
    int tapCount_ = 0;
    bool showsFocus_ = false;
    std::shared_ptr<const void> pause_ = std::make_shared<char>();
};

}
