#pragma once
#include "platform/graphics/CGAffineTransform.h"
#include "platform/graphics/CGContext.h"
#include "platform/graphics/CGGeometry.h"
#include "platform/graphics/UIColor.h"
#include "platform/uikit/UIAccessibility.h"
#include "platform/uikit/UIViewAutoresizing.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vistrel {
class Bitmap;
class CAGradientLayer;
class UITouch;
class UIViewController;
class UIWindow;
struct UIKey;
namespace host {
class ForeignContent;
}

/// How a view is placed and shown; animations interpolate between two of these.
struct ViewState {
    CGPoint center; ///< in the superview
    CGRect bounds;  ///< own coordinates; the origin scrolls the content
    CGAffineTransform transform;
    double alpha = 1;
    UIColor backgroundColor = UIColor::clearColor();
    /// From the view's own coordinates to its superview's.
    CGAffineTransform toSuperview() const;
    friend bool operator==(const ViewState&, const ViewState&) = default;
};

/// A rectangle of the screen: placed in its superview, drawn, hit by touches, animated. Main thread
/// only. Views are held by shared_ptr; a superview owns its subviews. drawRect draws once, into a
/// picture that is kept until setNeedsDisplay; moving, fading and scrolling reuse
/// it.
class UIView : public std::enable_shared_from_this<UIView> {
public:
    explicit UIView(CGRect frame = {});
    virtual ~UIView();
    UIView(const UIView&) = delete;
    UIView& operator=(const UIView&) = delete;

    // Geometry. Inside an animation block changes are animated; getters return the final value
    // immediately.
    /// The bounding rectangle in the superview's coordinates.
    CGRect frame() const;
    virtual void setFrame(const CGRect& frame);
    const CGRect& bounds() const { return state_.bounds; }
    virtual void setBounds(const CGRect& bounds);
    CGPoint center() const { return state_.center; }
    void setCenter(CGPoint center);
    const CGAffineTransform& transform() const { return state_.transform; }
    void setTransform(const CGAffineTransform& transform);
    double alpha() const { return state_.alpha; }
    void setAlpha(double alpha);
    const UIColor& backgroundColor() const { return state_.backgroundColor; }
    virtual void setBackgroundColor(const UIColor& color);

    bool isHidden() const { return hidden_; }
    void setHidden(bool hidden);
    bool isOpaque() const { return opaque_; }
    /// An opaque view promises to paint every point of its rectangle.
    void setOpaque(bool opaque);
    bool clipsToBounds() const { return clipsToBounds_; }
    void setClipsToBounds(bool clips);
    bool isUserInteractionEnabled() const { return userInteractionEnabled_; }
    void setUserInteractionEnabled(bool enabled);
    unsigned autoresizingMask() const { return autoresizingMask_; }
    void setAutoresizingMask(unsigned mask) { autoresizingMask_ = mask; }
    void setAutoresizesSubviews(bool autoresizes) { autoresizesSubviews_ = autoresizes; }

    // The tree.
    UIView* superview() const { return superview_; }
    const std::vector<std::shared_ptr<UIView>>& subviews() const { return subviews_; }
    UIWindow* window() const;
    bool isDescendantOfView(const UIView& view) const;
    void addSubview(std::shared_ptr<UIView> view);
    void insertSubviewAtIndex(std::shared_ptr<UIView> view, std::size_t index);
    void insertSubviewBelowSubview(std::shared_ptr<UIView> view, const UIView& sibling);
    void bringSubviewToFront(const UIView& view);
    void sendSubviewToBack(const UIView& view);
    /// Safe when there is no superview. The superview's reference is dropped.
    void removeFromSuperview();

    // Coordinates; `view` null means the window.
    CGPoint convertPointToView(CGPoint point, const UIView* view) const;
    CGPoint convertPointFromView(CGPoint point, const UIView* view) const;
    CGRect convertRectToView(const CGRect& rect, const UIView* view) const;
    /// From own coordinates to the superview's.
    CGAffineTransform placement() const { return state_.toSuperview(); }
    /// From own coordinates to those of the topmost view (the screen, when the view is on it).
    CGAffineTransform transformToRoot() const;
    /// Whether the view and its ancestors up to the screen are not hidden; true also while faded or
    /// covered.
    bool isOnScreen() const;

    // Layout and drawing.
    void setNeedsLayout();
    /// Whether layoutIfNeeded would do something, here or below.
    bool needsLayout() const { return needsLayout_ || descendantNeedsLayout_; }
    void layoutIfNeeded();
    virtual void layoutSubviews() {}
    /// The size that fits the content; `size` is the available space.
    virtual CGSize sizeThatFits(CGSize size) const;
    virtual void setNeedsDisplay();
    /// Requests a new frame of the screen.
    void setNeedsComposition();
    /// Paints into the current context; `rect` is the bounds. Called only when drawsContent returns
    /// true.
    virtual void drawRect(const CGRect& rect);
    virtual bool drawsContent() const { return false; }
    /// What drawRect painted, at the screen's scale; painted now when it is missing or dirty.
    std::shared_ptr<const Bitmap> drawnPicture();
    /// A finished picture to show instead of what drawRect paints (an image view's image); null for
    /// none.
    virtual std::shared_ptr<const Bitmap> contentPicture() { return nullptr; }
    /// Foreign content that fills the bounds, drawn between background and subviews; null for none.
    virtual host::ForeignContent* foreignContent() { return nullptr; }
    /// Layers under the subviews, in order.
    const std::vector<std::shared_ptr<CAGradientLayer>>& gradientLayers() const {
        return gradientLayers_;
    }
    void insertGradientLayerAtIndex(std::shared_ptr<CAGradientLayer> layer, std::size_t index);
    void removeGradientLayer(const CAGradientLayer& layer);

    // Touches and keys. Unhandled keys go up the superviews.
    /// The deepest view under the point (own coordinates) that takes touches.
    virtual std::shared_ptr<UIView> hitTest(CGPoint point);
    virtual bool pointInside(CGPoint point) const;
    virtual void touchesBegan(const UITouch& touch);
    virtual void touchesMoved(const UITouch& touch);
    virtual void touchesEnded(const UITouch& touch);
    virtual void touchesCancelled(const UITouch& touch);
    /// Asked of the hit view and every ancestor, innermost first, while a touch moves. The first
    /// that returns true takes over the touch: the old owner gets touchesCancelled, this view gets
    /// touchesBegan with the touch as it is now, and everything after.
    virtual bool shouldCaptureTouch(const UITouch& touch);
    /// Called on every ancestor of the hit view when a touch begins inside. True swallows the
    /// touch: nothing below receives it and this view owns it (a list that was still rolling).
    virtual bool touchWillBeginInside(const UITouch& touch);
    /// Returns whether the key was used.
    virtual bool keyPressed(const UIKey& key);
    /// A wheel or touchpad step in points; returns whether the content could move that way.
    virtual bool scrollBy(double /*dx*/, double /*dy*/, double /*timestamp*/) { return false; }
    /// The mouse's second button was pressed at that point (own coordinates). Returns whether a
    /// menu is shown now.
    virtual bool menuRequested(CGPoint /*point*/) { return false; }
    /// The mouse leaves the window after it was pressed at that point (own coordinates). Returns
    /// the device path of the file that it takes along; nothing when there is none, or when the
    /// touch has a use here.
    virtual std::optional<std::string> fileDraggedFrom(CGPoint /*point*/) { return std::nullopt; }
    /// Whether this view is offered keys that the focused view does not use: lists, and screens
    /// with shortcuts.
    virtual bool takesUnfocusedKeys() const { return viewController_ != nullptr; }
    virtual bool canBecomeFirstResponder() const { return false; }
    virtual void focusChanged(bool /*focused*/) {}
    /// Text that can be copied.
    virtual std::string selectedText() const { return {}; }
    /// What the keyboard acts on inside the focused view: a list's row, a panel's button; the view
    /// itself by default. The focus ring surrounds it, and screen readers announce it.
    virtual std::shared_ptr<UIView> focusedPart() { return shared_from_this(); }

    /// Role None for mere containers.
    virtual UIAccessibilityElement accessibilityElement() const { return accessibility_; }
    void setAccessibility(UIAccessibilityElement element) { accessibility_ = std::move(element); }
    /// What a screen reader's "press" does; the default is a tap in the middle.
    virtual void accessibilityActivate();
    /// A screen reader sets the value of an element with a range.
    virtual void accessibilitySetValue(double /*value*/) {}

    // Animation blocks; see UIViewAnimation.h for curves and transitions.
    /// What is shown now: between old and new while an animation runs.
    const ViewState& presentationState() const;

    virtual void didMoveToWindow() {}

    /// Set by the controller whose root view this is; not owned.
    UIViewController* viewController() const { return viewController_; }
    void setViewController(UIViewController* controller) { viewController_ = controller; }

protected:
    /// For a window, which counts as its own.
    UIView(CGRect frame, UIWindow* window);
    /// Whether this is the root that the display shows.
    virtual bool isScreen() const { return false; }
    /// Lets every subview go at once.
    void detachSubviews();

private:
    void changeState(const ViewState& next);
    void changeBounds(const CGRect& bounds, CGPoint center);
    void resizeSubviews(CGSize oldSize);
    void resizeWithOldSuperviewSize(CGSize oldSize, CGSize newSize);
    void attachTo(UIView* superview);
    void windowDidChange(UIWindow* window);
    void announceLayout();

    ViewState state_;
    bool hidden_ = false;
    bool opaque_ = true;
    bool clipsToBounds_ = false;
    bool userInteractionEnabled_ = true;
    bool autoresizesSubviews_ = true;
    bool needsLayout_ = true;
    bool descendantNeedsLayout_ = false;
    bool needsDisplay_ = true;
    unsigned autoresizingMask_ = UIViewAutoresizingNone;
    UIView* superview_ = nullptr;
    UIWindow* window_ = nullptr;
    UIViewController* viewController_ = nullptr;
    std::vector<std::shared_ptr<UIView>> subviews_;
    std::vector<std::shared_ptr<CAGradientLayer>> gradientLayers_;
    std::shared_ptr<Bitmap> drawn_;
    double drawnScale_ = 0;
    UIAccessibilityElement accessibility_;
};

}
