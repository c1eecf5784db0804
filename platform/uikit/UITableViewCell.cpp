#include "platform/uikit/UITableViewCell.h"

#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIControl.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UITableViewCellControls.h"
#include "platform/uikit/UITableViewCellOwner.h"
#include "platform/uikit/UITouch.h"
#include "platform/uikit/UIViewAnimation.h"

#include <cmath>

namespace vistrel {

namespace {

constexpr double kModeDuration = 0.3;
constexpr double kLongPressSlop = 10;

}

UITableViewCell::UITableViewCell(UITableViewCellStyle /*style*/, std::string reuseIdentifier)
    : reuseIdentifier_(std::move(reuseIdentifier))
    , controls_(std::make_unique<UITableViewCellControls>(*this)) {
    setOpaque(false);
}

UITableViewCell::~UITableViewCell() = default;

UILabel& UITableViewCell::textLabel() {
    if (!textLabel_) {
        textLabel_ = std::make_shared<UILabel>();
        textLabel_->setOpaque(false);
        textLabel_->setUserInteractionEnabled(false);
        textLabel_->setFont(UIFont::boldSystemFontOfSize(20));
        textLabel_->setHighlightedTextColor(UIColor::whiteColor());
        textLabel_->setHighlighted(highlighted_);
        if (backgroundColor() == UIColor::clearColor())
            setBackgroundColor(UIColor::whiteColor());
        addSubview(textLabel_);
        setNeedsLayout();
    }
    return *textLabel_;
}

UIImageView& UITableViewCell::imageView() {
    if (!imageView_) {
        imageView_ = std::make_shared<UIImageView>();
        imageView_->setOpaque(false);
        imageView_->setUserInteractionEnabled(false);
        addSubview(imageView_);
    }
    // The caller is about to give it a picture of unknown size.
    setNeedsLayout();
    return *imageView_;
}

void UITableViewCell::setAccessoryType(UITableViewCellAccessoryType type) {
    if (accessoryType_ == type)
        return;
    accessoryType_ = type;
    setNeedsLayout();
}

void UITableViewCell::setHighlighted(bool highlighted, bool animated) {
    if (highlighted_ == highlighted)
        return;
    highlighted_ = highlighted;
    controls_->showSelection(highlighted, animated);
    if (textLabel_)
        textLabel_->setHighlighted(highlighted);
    setNeedsDisplay();
}

void UITableViewCell::setSelected(bool selected, bool animated) {
    selected_ = selected;
    setHighlighted(selected, animated);
}

void UITableViewCell::setEditing(bool editing, bool animated) {
    if (editing_ == editing)
        return;
    controls_->prepareForMode();
    if (animated)
        layoutIfNeeded();
    editing_ = editing;
    relayout(animated);
}

void UITableViewCell::setShowingDeleteConfirmation(bool showing, bool animated) {
    if (showingDeleteConfirmation_ == showing)
        return;
    controls_->prepareForMode();
    if (animated)
        layoutIfNeeded();
    showingDeleteConfirmation_ = showing;
    relayout(animated);
}

void UITableViewCell::relayout(bool animated) {
    setNeedsLayout();
    if (!animated)
        return;
    UIViewAnimation::beginAnimations();
    UIViewAnimation::setAnimationDuration(kModeDuration);
    layoutIfNeeded();
    UIViewAnimation::commitAnimations();
}

void UITableViewCell::prepareForReuse() {
    setSelected(false, false);
    setShowingDeleteConfirmation(false, false);
}

void UITableViewCell::layoutSubviews() {
    UITableViewCellLayoutInput input;
    input.size = bounds().size;
    if (imageView_)
        input.imageSize = imageView_->sizeThatFits({});
    input.accessory = accessoryType_ != UITableViewCellAccessoryType::None;
    input.editing = editing_;
    input.confirming = showingDeleteConfirmation_;
    input.confirmationWidth = controls_->confirmationWidth();
    const auto layout = UITableViewCellLayout::forInput(input);
    if (imageView_)
        imageView_->setFrame(layout.image);
    if (textLabel_)
        textLabel_->setFrame(layout.text);
    controls_->layout(layout);
}

std::string UITableViewCell::accessibilityLabel() const {
    return textLabel_ ? textLabel_->text() : std::string();
}

UIAccessibilityElement UITableViewCell::accessibilityElement() const {
    return {UIAccessibilityRole::Row, accessibilityLabel(), {}, true};
}

UITableViewCellOwner* UITableViewCell::owner() const {
    return dynamic_cast<UITableViewCellOwner*>(superview());
}

std::shared_ptr<UIView> UITableViewCell::hitTest(CGPoint point) {
    auto hit = UIView::hitTest(point);
    if (!hit)
        return nullptr;
    for (UIView* view = hit.get(); view && view != this; view = view->superview())
        if (dynamic_cast<UIControl*>(view))
            return hit;
    return shared_from_this();
}

void UITableViewCell::touchesBegan(const UITouch&) {
    if (auto* table = owner())
        table->cellTouchBegan(*this);
}

void UITableViewCell::touchesMoved(const UITouch& touch) {
    auto* table = owner();
    if (!table)
        return;
    const double across = touch.windowLocation.x - touch.startWindowLocation.x;
    const double along = touch.windowLocation.y - touch.startWindowLocation.y;
    if (!pointInside(touch.locationInView(*this)))
        table->cellTouchCancelled();
    else if (std::hypot(across, along) > kLongPressSlop)
        table->cellTouchStrayed();
}

void UITableViewCell::touchesEnded(const UITouch&) {
    if (auto* table = owner())
        table->cellTouchEnded();
}

void UITableViewCell::touchesCancelled(const UITouch&) {
    if (auto* table = owner())
        table->cellTouchCancelled();
}

void UITableViewCell::accessibilityActivate() {
    auto* table = owner();
    if (table && !UIApplication::sharedApplication().events().isIgnoringInteraction())
        table->cellActivated(*this);
}

}
