#include "platform/uikit/UIScrollView.h"

#include "platform/foundation/NSRunLoop.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIScrollIndicator.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

constexpr double kGlideDuration = 0.3;

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
    horizontal_.setRange({least.x, most.x, bounds().size.width});
    vertical_.setRange({least.y, most.y, bounds().size.height});
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

}
