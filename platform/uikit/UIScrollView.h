#pragma once
#include "platform/uikit/CADisplayLink.h"
#include "platform/uikit/UIScrollMotion.h"
#include "platform/uikit/UIView.h"

#include <memory>

namespace vistrel {
class UIScrollIndicator;

enum class UIScrollViewIndicatorStyle { Default = 0, Black = 1, White = 2 };

/// Shows a part of larger content: drag, momentum, bounce, indicator. The scroll position is the
/// bounds' origin.
class UIScrollView : public UIView {
public:
    explicit UIScrollView(CGRect frame = {});
    ~UIScrollView() override;

    CGSize contentSize() const { return contentSize_; }
    void setContentSize(CGSize size);
    CGPoint contentOffset() const { return bounds().origin; }
    /// Animated: a glide of 0.3 seconds, which a touch stops.
    void setContentOffset(CGPoint offset, bool animated = false);
    const UIEdgeInsets& contentInset() const { return contentInset_; }
    void setContentInset(const UIEdgeInsets& insets);
    /// Scrolls by the least that shows all of it; not at all when it is visible already.
    void scrollRectToVisible(const CGRect& rect, bool animated);
    void setAlwaysBounceVertical(bool always) { alwaysBounceVertical_ = always; }
    void setIndicatorStyle(UIScrollViewIndicatorStyle style);
    void setShowsVerticalScrollIndicator(bool shows);
    /// Shows the indicator for a moment, as a hint that there is more to see.
    void flashScrollIndicators();
    bool isDragging() const;
    /// Whether momentum, a spring back or an animated move is in progress.
    bool isDecelerating() const;
    /// A wheel or touchpad step in points. Whether the content could move that way.
    bool scrollBy(double dx, double dy, double timestamp) override;

    bool shouldCaptureTouch(const UITouch& touch) override;
    bool touchWillBeginInside(const UITouch& touch) override;
    void touchesBegan(const UITouch& touch) override;
    void touchesMoved(const UITouch& touch) override;
    void touchesEnded(const UITouch& touch) override;
    void touchesCancelled(const UITouch& touch) override;
    bool keyPressed(const UIKey& key) override;
    bool takesUnfocusedKeys() const override { return true; }
    void setFrame(const CGRect& frame) override;

    /// Adds a part of the content at the back, or in front of all but the indicator.
    void addContentAtBack(std::shared_ptr<UIView> view);
    void addContentInFront(std::shared_ptr<UIView> view);

protected:
    /// After every change of the offset.
    virtual void didScroll();
    /// A finger has begun to drag the content.
    virtual void willBeginDragging() {}
    /// The offset's allowed range, insets included.
    CGPoint minimumOffset() const;
    CGPoint maximumOffset() const;

private:
    bool canMoveVertically() const;
    bool canMoveHorizontally() const;
    bool hasMovedFarEnough(const UITouch& touch) const;
    void beginDrag(const UITouch& touch);
    void updateRange();
    void frameCame(double now);
    void motionChanged();
    void showMotionOffset();
    void moveTo(CGPoint offset, bool animated);
    void placeIndicator(bool shown);

    CGSize contentSize_;
    UIEdgeInsets contentInset_;
    bool alwaysBounceVertical_ = false;
    bool showsVerticalIndicator_ = true;
    UIScrollViewIndicatorStyle indicatorStyle_ = UIScrollViewIndicatorStyle::Default;
    UIScrollMotion horizontal_;
    UIScrollMotion vertical_;
    CADisplayLink frames_;
    std::shared_ptr<UIScrollIndicator> indicator_; ///< made at the first movement
};

}
