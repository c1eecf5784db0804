#pragma once
#include "platform/uikit/UIView.h"

#include <memory>

namespace vistrel {
class UIScrollView;

enum class UIScrollViewIndicatorStyle { Default = 0, Black = 1, White = 2 };

class UIScrollViewDelegate {
public:
    virtual ~UIScrollViewDelegate() = default;
    virtual void scrollViewDidScroll(UIScrollView&) {}
};

/// Shows a part of larger content: drag, momentum, bounce, indicator. The scroll position is the
/// bounds' origin.
class UIScrollView : public UIView {
public:
    explicit UIScrollView(CGRect frame = {});
    ~UIScrollView() override;

    CGSize contentSize() const { return contentSize_; }
    void setContentSize(CGSize size);
    CGPoint contentOffset() const { return bounds().origin; }
    void setContentOffset(CGPoint offset, bool animated = false);
    const UIEdgeInsets& contentInset() const { return contentInset_; }
    void setContentInset(const UIEdgeInsets& insets);
    void scrollRectToVisible(const CGRect& rect, bool animated);
    void setScrollEnabled(bool enabled) { scrollEnabled_ = enabled; }
    void setBounces(bool bounces) { bounces_ = bounces; }
    void setAlwaysBounceVertical(bool always) { alwaysBounceVertical_ = always; }
    void setIndicatorStyle(UIScrollViewIndicatorStyle style);
    void setShowsVerticalScrollIndicator(bool shows);
    void setScrollDelegate(UIScrollViewDelegate* delegate) { scrollDelegate_ = delegate; }
    bool isDragging() const;
    bool isDecelerating() const;
    /// Ends momentum where it is.
    void stopScrolling();
    /// A wheel or touchpad step, points. Whether the content could move that way.
    bool scrollBy(double dx, double dy, double timestamp);

    bool shouldCaptureTouch(const UITouch& touch) override;
    bool touchWillBeginInside(const UITouch& touch) override;
    void touchesBegan(const UITouch& touch) override;
    void touchesMoved(const UITouch& touch) override;
    void touchesEnded(const UITouch& touch) override;
    void touchesCancelled(const UITouch& touch) override;
    bool keyPressed(const UIKey& key) override;
    void setFrame(const CGRect& frame) override;

protected:
    /// After every change of the offset.
    virtual void didScroll();
    /// The offset's allowed range, insets included.
    CGPoint minimumOffset() const;
    CGPoint maximumOffset() const;

private:
    class Motion; ///< drag, momentum and bounce as a state machine over time
    class Indicator;

    CGSize contentSize_;
    UIEdgeInsets contentInset_;
    bool scrollEnabled_ = true;
    bool bounces_ = true;
    bool alwaysBounceVertical_ = false;
    UIScrollViewDelegate* scrollDelegate_ = nullptr;
    std::unique_ptr<Motion> motion_;
    std::unique_ptr<Indicator> indicator_;
};

}
