#include "platform/uikit/UITextView.h"

#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIKey.h"
#include "platform/uikit/UITextCaret.h"
#include "platform/uikit/UITouch.h"

#include <cmath>

namespace vistrel {

namespace {
constexpr double kMargin = 8;
constexpr double kTapSlop = 12;
}

UITextView::UITextView(CGRect frame, const UIFont& font)
    : UIScrollView(frame)
    , editor_(UITextEditor::Lines::Many, font) {
    UIView::setOpaque(false);
    setClipsToBounds(true);
    setAlwaysBounceVertical(true);
    UIView::addSubview(editor_.caret());
    editor_.setWidth(frame.size.width - 2 * kMargin);
}

void UITextView::setText(const std::string& text) {
    editor_.setText(text);
    editor_.touched({0, 0}, UITextBuffer::Extend::No);
    relayout();
}

void UITextView::setFrame(const CGRect& frame) {
    UIScrollView::setFrame(frame);
    editor_.setWidth(frame.size.width - 2 * kMargin);
    relayout();
}

void UITextView::relayout() {
    setContentSize({bounds().size.width, editor_.lines().size().height + 2 * kMargin});
    editor_.caret()->moveTo(editor_.caretRect().offsetBy(kMargin, kMargin));
    setNeedsDisplay();
}

void UITextView::showCaret() {
    scrollRectToVisible(editor_.caretRect().offsetBy(kMargin, kMargin).insetBy(-2, -4), false);
}

void UITextView::didScroll() {
    UIScrollView::didScroll();
    setNeedsDisplay();
}

void UITextView::touchesEnded(const UITouch& touch) {
    const CGPoint moved{touch.windowLocation.x - touch.startWindowLocation.x,
                        touch.windowLocation.y - touch.startWindowLocation.y};
    const bool isTap = std::hypot(moved.x, moved.y) < kTapSlop && !isDragging();
    UIScrollView::touchesEnded(touch);
    if (!isTap)
        return;
    UIApplication::sharedApplication().events().setFirstResponder(shared_from_this());
    const CGPoint point = touch.locationInView(*this);
    editor_.touched({point.x - kMargin, point.y - kMargin}, UITextBuffer::Extend::No);
    relayout();
}

bool UITextView::keyPressed(const UIKey& key) {
    if (!focused_)
        return UIScrollView::keyPressed(key);
    const auto outcome = editor_.keyPressed(key);
    if (outcome == UITextEditor::Outcome::Ignored)
        return false;
    relayout();
    showCaret();
    if (outcome == UITextEditor::Outcome::Edited && textChanged_) {
        const auto self = weak_from_this().lock();
        const auto handler = textChanged_;
        handler();
    }
    return true;
}

void UITextView::focusChanged(bool focused) {
    focused_ = focused;
    editor_.caret()->setActive(focused && window() != nullptr);
}

void UITextView::didMoveToWindow() {
    UIScrollView::didMoveToWindow();
    focusChanged(focused_);
}

void UITextView::drawRect(const CGRect& rect) {
    const CGRect visible = rect.offsetBy(-kMargin, -kMargin);
    editor_.draw({kMargin, kMargin}, visible, UIColor::blackColor());
}

UIAccessibilityElement UITextView::accessibilityElement() const {
    UIAccessibilityElement element = UIView::accessibilityElement();
    element.role = UIAccessibilityRole::Field;
    element.value = editor_.text();
    return element;
}

}
