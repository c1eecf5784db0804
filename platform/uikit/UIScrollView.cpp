#include "platform/uikit/UIScrollView.h"

#include "platform/foundation/NSRunLoop.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIKey.h"
#include "platform/uikit/UIScrollIndicator.h"
#include "platform/uikit/UITouch.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

constexpr double kCaptureDistance = 10;
constexpr double kGlideDuration = 0.3;
constexpr double kKeyStep = 44;

UIColor colorFor(UIScrollViewIndicatorStyle style) {
    return style == UIScrollViewIndicatorStyle::White ? UIColor::colorWithWhiteAlpha(1, 0.6F)
                                                      : UIColor::colorWithWhiteAlpha(0, 0.5F);
}

/// Between pixels a picture is blurred.
double onPixel(double offset) {
    const double scale = UIImage::screenScale();
    return std::round(offset * scale) / scale;
}

/// How far one axis must go to show start…end within a view at `offset`.
double nearestOffset(double offset, double viewLength, double start, double end) {
    if (start < offset)
        return start;
    return end > offset + viewLength ? std::min(end - viewLength, start) : offset;
}

}

UIScrollView::UIScrollView(CGRect frame)
    : UIView(frame)
    , frames_([this](double now) { frameCame(now); }) {
    setClipsToBounds(true);
    updateRange();
}

UIScrollView::~UIScrollView() = default;

void UIScrollView::setContentSize(CGSize size) {
    if (size == contentSize_)
        return;
    contentSize_ = size;
    updateRange();
}

void UIScrollView::setContentInset(const UIEdgeInsets& insets) {
    const bool atTop = contentOffset().y == minimumOffset().y;
    contentInset_ = insets;
    updateRange();
    if (atTop && vertical_.phase() == UIScrollMotion::Phase::Rest)
        setContentOffset({contentOffset().x, minimumOffset().y});
}

void UIScrollView::setFrame(const CGRect& frame) {
    UIView::setFrame(frame);
    updateRange();
}

CGPoint UIScrollView::minimumOffset() const {
    return {-contentInset_.left, -contentInset_.top};
}

CGPoint UIScrollView::maximumOffset() const {
    const CGPoint least = minimumOffset();
    return {std::max(least.x, contentSize_.width + contentInset_.right - bounds().size.width),
            std::max(least.y, contentSize_.height + contentInset_.bottom - bounds().size.height)};
}

void UIScrollView::updateRange() {
    const CGPoint least = minimumOffset();
    const CGPoint most = maximumOffset();
    horizontal_.setRange({least.x, most.x, bounds().size.width, true});
    vertical_.setRange({least.y, most.y, bounds().size.height, true});
    showMotionOffset();
}

bool UIScrollView::isDragging() const {
    return horizontal_.phase() == UIScrollMotion::Phase::Dragging ||
           vertical_.phase() == UIScrollMotion::Phase::Dragging;
}

bool UIScrollView::isDecelerating() const {
    return horizontal_.isMoving() || vertical_.isMoving();
}

void UIScrollView::setContentOffset(CGPoint offset, bool animated) {
    moveTo(offset, animated);
}

void UIScrollView::moveTo(CGPoint offset, bool animated) {
    if (animated) {
        const double now = NSRunLoop::now();
        horizontal_.glideTo(offset.x, now, kGlideDuration);
        vertical_.glideTo(offset.y, now, kGlideDuration);
    } else {
        horizontal_.setOffset(offset.x);
        vertical_.setOffset(offset.y);
    }
    motionChanged();
}

void UIScrollView::scrollRectToVisible(const CGRect& rect, bool animated) {
    const CGSize size = bounds().size;
    const CGPoint least = minimumOffset();
    const CGPoint most = maximumOffset();
    const CGPoint now = contentOffset();
    const CGPoint aim{
        std::clamp(nearestOffset(now.x, size.width, rect.minX(), rect.maxX()), least.x, most.x),
        std::clamp(nearestOffset(now.y, size.height, rect.minY(), rect.maxY()), least.y, most.y)};
    if (aim != now)
        moveTo(aim, animated);
}

bool UIScrollView::scrollBy(double dx, double dy, double timestamp) {
    if (!scrollEnabled_)
        return false;
    const bool acrossMoved = dx != 0 && horizontal_.wheel(dx, timestamp);
    const bool downMoved = dy != 0 && vertical_.wheel(dy, timestamp);
    if (!acrossMoved && !downMoved)
        return false;
    motionChanged();
    return true;
}

void UIScrollView::frameCame(double now) {
    const auto self = weak_from_this().lock();
    horizontal_.advance(now);
    vertical_.advance(now);
    motionChanged();
}

/// Starts or stops what accompanies movement, and shows the new offset.
void UIScrollView::motionChanged() {
    if (isDecelerating()) {
        frames_.start();
    } else {
        frames_.stop();
        if (indicator_ && !isDragging())
            indicator_->fadeSoon();
    }
    showMotionOffset();
}

void UIScrollView::showMotionOffset() {
    const CGPoint offset{onPixel(horizontal_.offset()), onPixel(vertical_.offset())};
    if (offset == contentOffset())
        return;
    setBounds({offset, bounds().size});
    didScroll();
}

void UIScrollView::didScroll() {
    setNeedsLayout();
    placeIndicator(isDragging() || isDecelerating());
}

// The indicator.

void UIScrollView::setIndicatorStyle(UIScrollViewIndicatorStyle style) {
    indicatorStyle_ = style;
    if (indicator_)
        indicator_->setColor(colorFor(style));
}

void UIScrollView::setShowsVerticalScrollIndicator(bool shows) {
    showsVerticalIndicator_ = shows;
    if (indicator_)
        indicator_->setHidden(!shows);
}

void UIScrollView::flashScrollIndicators() {
    placeIndicator(true);
    if (indicator_)
        indicator_->fadeSoon();
}

void UIScrollView::placeIndicator(bool shown) {
    const CGPoint least = minimumOffset();
    const CGPoint most = maximumOffset();
    if (!showsVerticalIndicator_ || (!indicator_ && (!shown || most.y <= least.y)))
        return;
    if (!indicator_) {
        indicator_ = std::make_shared<UIScrollIndicator>();
        indicator_->setColor(colorFor(indicatorStyle_));
        addSubview(indicator_);
    }
    const CGRect area = bounds();
    const auto span = scrollIndicatorSpan(area.origin.y, least.y, most.y, area.size.height);
    indicator_->setFrame(CGRectMake(area.maxX() - UIScrollIndicator::thickness - 2,
                                    area.minY() + span.position, UIScrollIndicator::thickness,
                                    span.length));
    if (shown && most.y > least.y)
        indicator_->show();
}

void UIScrollView::addContentAtBack(std::shared_ptr<UIView> view) {
    insertSubviewAtIndex(std::move(view), 0);
}

void UIScrollView::addContentInFront(std::shared_ptr<UIView> view) {
    if (indicator_)
        insertSubviewBelowSubview(std::move(view), *indicator_);
    else
        addSubview(std::move(view));
}

// Touches and keys.

bool UIScrollView::canMoveVertically() const {
    return scrollEnabled_ && (alwaysBounceVertical_ || maximumOffset().y > minimumOffset().y);
}

bool UIScrollView::canMoveHorizontally() const {
    return scrollEnabled_ && maximumOffset().x > minimumOffset().x;
}

bool UIScrollView::hasMovedFarEnough(const UITouch& touch) const {
    const double dx = std::abs(touch.windowLocation.x - touch.startWindowLocation.x);
    const double dy = std::abs(touch.windowLocation.y - touch.startWindowLocation.y);
    return (canMoveVertically() && dy >= kCaptureDistance && dy >= dx) ||
           (canMoveHorizontally() && dx >= kCaptureDistance && dx > dy);
}

bool UIScrollView::shouldCaptureTouch(const UITouch& touch) {
    return !isDragging() && hasMovedFarEnough(touch);
}

bool UIScrollView::touchWillBeginInside(const UITouch& touch) {
    if (!isDecelerating())
        return false;
    beginDrag(touch);
    return true;
}

void UIScrollView::beginDrag(const UITouch& touch) {
    const double now = touch.timestamp;
    if (canMoveHorizontally())
        horizontal_.beginDrag(touch.windowLocation.x, now);
    if (canMoveVertically())
        vertical_.beginDrag(touch.windowLocation.y, now);
    motionChanged();
    willBeginDragging();
}

void UIScrollView::touchesBegan(const UITouch& touch) {
    if (!isDragging() && (isDecelerating() || hasMovedFarEnough(touch)))
        beginDrag(touch);
}

void UIScrollView::touchesMoved(const UITouch& touch) {
    if (!isDragging()) {
        if (hasMovedFarEnough(touch))
            beginDrag(touch);
        return;
    }
    horizontal_.dragTo(touch.windowLocation.x, touch.timestamp);
    vertical_.dragTo(touch.windowLocation.y, touch.timestamp);
    motionChanged();
}

void UIScrollView::touchesEnded(const UITouch& touch) {
    if (!isDragging())
        return;
    horizontal_.endDrag(touch.timestamp);
    vertical_.endDrag(touch.timestamp);
    motionChanged();
}

void UIScrollView::touchesCancelled(const UITouch& touch) {
    if (!isDragging())
        return;
    horizontal_.stop(touch.timestamp);
    vertical_.stop(touch.timestamp);
    motionChanged();
}

bool UIScrollView::keyPressed(const UIKey& key) {
    const double page = bounds().size.height - kKeyStep;
    const CGPoint now = contentOffset();
    double aim = now.y;
    switch (key.code) {
    case UIKeyCode::Up:
        aim -= kKeyStep;
        break;
    case UIKeyCode::Down:
        aim += kKeyStep;
        break;
    case UIKeyCode::PageUp:
        aim -= page;
        break;
    case UIKeyCode::PageDown:
    case UIKeyCode::Space:
        aim += page;
        break;
    case UIKeyCode::Home:
        aim = minimumOffset().y;
        break;
    case UIKeyCode::End:
        aim = maximumOffset().y;
        break;
    default:
        return false;
    }
    aim = std::clamp(aim, minimumOffset().y, maximumOffset().y);
    if (!scrollEnabled_ || aim == now.y)
        return false;
    moveTo({now.x, aim}, true);
    return true;
}

}
