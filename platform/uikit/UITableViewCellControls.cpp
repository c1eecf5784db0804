#include "platform/uikit/UITableViewCellControls.h"

#include "platform/uikit/UITableViewCellOwner.h"
#include "platform/uikit/UITableViewCellParts.h"
#include "platform/uikit/UIViewAnimation.h"

#include <numbers>

namespace vistrel {

namespace {

constexpr double kSelectionFade = 0.35;
constexpr double kSeparatorHeight = 1;

UITableViewCell* cellOf(const UIView& control) {
    return dynamic_cast<UITableViewCell*>(control.superview());
}

}

UITableViewCellControls::UITableViewCellControls(UITableViewCell& cell)
    : cell_(cell) {}

UITableViewCellControls::~UITableViewCellControls() = default;

void UITableViewCellControls::showSelection(bool shows, bool animated) {
    if (accessory_)
        accessory_->setHighlighted(shows);
    if (!selection_ && !shows)
        return;
    if (!selection_) {
        selection_ = std::make_shared<UITableViewCellSelectionView>();
        selection_->setFrame(cell_.bounds());
        cell_.insertSubviewAtIndex(selection_, 0);
    }
    if (!animated) {
        UIViewAnimation::withoutAnimation([&] { selection_->setAlpha(shows ? 1 : 0); });
        return;
    }
    UIViewAnimation::beginAnimations();
    UIViewAnimation::setAnimationDuration(kSelectionFade);
    selection_->setAlpha(shows ? 1 : 0);
    UIViewAnimation::commitAnimations();
}

void UITableViewCellControls::setSeparator(const std::optional<UIColor>& color) {
    if (!color && !separator_)
        return;
    if (!separator_) {
        separator_ = std::make_shared<UIView>();
        separator_->setOpaque(false);
        separator_->setUserInteractionEnabled(false);
        cell_.addSubview(separator_);
        cell_.setNeedsLayout();
    }
    separator_->setHidden(!color);
    if (color)
        separator_->setBackgroundColor(*color);
}

void UITableViewCellControls::setConfirmationTitle(const std::string& title) {
    confirmationTitle_ = title;
    if (confirmation_)
        confirmation_->setTitle(title);
}

double UITableViewCellControls::confirmationWidth() const {
    return confirmation_ ? UITableViewCellConfirmationButton::widthForTitle(confirmationTitle_) : 0;
}

bool UITableViewCellControls::confirmationContains(CGPoint windowPoint) const {
    return confirmation_ && cell_.showingDeleteConfirmation() &&
           confirmation_->pointInside(confirmation_->convertPointFromView(windowPoint, nullptr));
}

void UITableViewCellControls::makeDeleteCircle(const UITableViewCellLayout& layout) {
    circle_ = std::make_shared<UITableViewCellDeleteCircle>();
    circle_->setFrame(layout.deleteCircle);
    circle_->addTarget(
        [circle = circle_.get()] {
            UITableViewCell* cell = cellOf(*circle);
            if (auto* table = cell ? cell->owner() : nullptr)
                table->cellDeleteCirclePressed(*cell);
        },
        UIControlEventTouchUpInside);
    cell_.addSubview(circle_);
}

void UITableViewCellControls::makeConfirmation(const UITableViewCellLayout& layout) {
    confirmation_ = std::make_shared<UITableViewCellConfirmationButton>();
    confirmation_->setTitle(confirmationTitle_);
    confirmation_->setFrame(CGRectMake(layout.confirmation.minX(), layout.confirmation.minY(),
                                       confirmationWidth(), layout.confirmation.size.height));
    confirmation_->addTarget(
        [button = confirmation_.get()] {
            UITableViewCell* cell = cellOf(*button);
            if (auto* table = cell ? cell->owner() : nullptr)
                table->cellConfirmationPressed(*cell);
        },
        UIControlEventTouchUpInside);
    cell_.addSubview(confirmation_);
}

void UITableViewCellControls::prepareForMode() {
    UITableViewCellLayoutInput input;
    input.size = cell_.bounds().size;
    const auto beside = UITableViewCellLayout::forInput(input);
    UIViewAnimation::withoutAnimation([&] {
        if (!circle_)
            makeDeleteCircle(beside);
        if (!confirmation_)
            makeConfirmation(beside);
    });
}

void UITableViewCellControls::layout(const UITableViewCellLayout& layout) {
    if (selection_)
        selection_->setFrame(cell_.bounds());
    if (separator_) {
        const CGSize size = cell_.bounds().size;
        separator_->setFrame(
            CGRectMake(0, size.height - kSeparatorHeight, size.width, kSeparatorHeight));
    }
    layoutAccessory(layout.accessory);
    layoutModes(layout);
    bringToFront();
}

void UITableViewCellControls::layoutAccessory(const CGRect& frame) {
    const bool wanted = cell_.accessoryType() == UITableViewCellAccessoryType::DisclosureIndicator;
    if (!wanted && !accessory_)
        return;
    if (!accessory_) {
        UIViewAnimation::withoutAnimation([&] {
            accessory_ = std::make_shared<UITableViewCellAccessoryView>();
            accessory_->setFrame(frame);
            cell_.addSubview(accessory_);
        });
        accessory_->setHighlighted(cell_.isHighlighted());
    }
    accessory_->setFrame(frame);
    accessory_->setHidden(!wanted);
    accessory_->setAlpha(cell_.showingDeleteConfirmation() ? 0 : 1);
}

void UITableViewCellControls::layoutModes(const UITableViewCellLayout& layout) {
    if (circle_) {
        const bool upright = cell_.showingDeleteConfirmation();
        circle_->setTransform(CGAffineTransformMakeRotation(upright ? -std::numbers::pi / 2 : 0));
        circle_->setCenter({layout.deleteCircle.midX(), layout.deleteCircle.midY()});
        circle_->setAlpha(cell_.isEditing() ? 1 : 0);
        circle_->setUserInteractionEnabled(cell_.isEditing());
    }
    if (confirmation_) {
        confirmation_->setFrame(layout.confirmation);
        confirmation_->setAlpha(cell_.showingDeleteConfirmation() ? 1 : 0);
        confirmation_->setUserInteractionEnabled(cell_.showingDeleteConfirmation());
    }
}

void UITableViewCellControls::bringToFront() {
    std::shared_ptr<UIView> ordered[] = {separator_, accessory_, circle_, confirmation_};
    std::size_t wanted = 0;
    for (const auto& view : ordered)
        wanted += view ? 1 : 0;
    const auto& all = cell_.subviews();
    std::size_t place = all.size() - wanted;
    for (const auto& view : ordered) {
        if (view && all[place++] != view) {
            for (const auto& each : ordered)
                if (each)
                    cell_.bringSubviewToFront(*each);
            return;
        }
    }
}

}
