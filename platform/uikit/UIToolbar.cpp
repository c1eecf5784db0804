#include "platform/uikit/UIToolbar.h"

#include "platform/foundation/Weakly.h"
#include "platform/uikit/UIBarButton.h"
#include "platform/uikit/UIViewAnimation.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vistrel {

namespace {

constexpr double kMargin = 6;
constexpr double kGap = 6;
constexpr double kFadeSeconds = 0.25;

bool isSpace(const UIBarButtonItem& item) {
    return item.kind() == UIBarButtonItem::Kind::SystemItem &&
           (item.systemItem() == UIBarButtonSystemItem::FlexibleSpace ||
            item.systemItem() == UIBarButtonSystemItem::FixedSpace);
}

}

UIToolbar::UIToolbar(CGRect frame)
    : UIView(frame) {}

UIToolbar::~UIToolbar() = default;

void UIToolbar::setItems(std::vector<std::shared_ptr<UIBarButtonItem>> items, bool animated) {
    std::vector<std::shared_ptr<UIView>> views(items.size());
    std::vector<std::shared_ptr<UIView>> added;
    const UIColor color = UIBarDrawing::barColor(tintColor_, barStyle_);
    for (std::size_t index = 0; index < items.size(); ++index) {
        const bool isKept = index < items_.size() && items_[index] == items[index];
        if (isKept) {
            views[index] = itemViews_[index];
        } else if (!isSpace(*items[index])) {
            views[index] =
                UIBarButton::viewForItem(items[index], UIBarButton::Place::Toolbar, color);
            added.push_back(views[index]);
        }
    }
    replaceViews(std::move(views), added, animated);
    items_ = std::move(items);
    for (const auto& item : items_)
        observe(*item);
    setNeedsLayout();
}

void UIToolbar::replaceViews(std::vector<std::shared_ptr<UIView>> views,
                             const std::vector<std::shared_ptr<UIView>>& added, bool animated) {
    const auto old = std::exchange(itemViews_, std::move(views));
    for (const auto& view : old)
        if (view && std::find(itemViews_.begin(), itemViews_.end(), view) == itemViews_.end())
            view->removeFromSuperview();
    for (const auto& view : added) {
        addSubview(view);
        if (animated)
            view->setAlpha(0);
    }
    if (!animated || added.empty())
        return;
    UIViewAnimation::beginAnimations();
    UIViewAnimation::setAnimationDuration(kFadeSeconds);
    for (const auto& view : added)
        view->setAlpha(1);
    UIViewAnimation::commitAnimations();
}

void UIToolbar::observe(UIBarButtonItem& item) {
    item.setChangeHandler(weakly(this, &UIToolbar::itemsChanged));
}

void UIToolbar::itemsChanged() {
    for (const auto& view : itemViews_)
        if (auto* button = dynamic_cast<UIBarButton*>(view.get()))
            button->itemChanged();
    setNeedsLayout();
}

void UIToolbar::setTintColor(std::optional<UIColor> color) {
    tintColor_ = color;
    rebuild();
}

void UIToolbar::setBarStyle(UIBarStyle style) {
    barStyle_ = style;
    setOpaque(style != UIBarStyle::BlackTranslucent);
    rebuild();
}

void UIToolbar::rebuild() {
    auto items = std::exchange(items_, {});
    setItems(std::move(items));
    setNeedsDisplay();
}

void UIToolbar::layoutSubviews() {
    double fixed = 2 * kMargin;
    int flexible = 0;
    for (std::size_t index = 0; index < items_.size(); ++index) {
        if (items_[index]->isFlexibleSpace())
            ++flexible;
        else
            fixed += widthOfItem(index);
        if (index > 0)
            fixed += kGap;
    }
    const double share = flexible > 0 ? std::max(0.0, bounds().size.width - fixed) / flexible : 0;
    double x = kMargin;
    for (std::size_t index = 0; index < items_.size(); ++index) {
        const double width = items_[index]->isFlexibleSpace() ? share : widthOfItem(index);
        if (itemViews_[index]) {
            const double height = heightOfItem(index);
            itemViews_[index]->setFrame(CGRectMake(
                std::round(x), std::floor((bounds().size.height - height) / 2), width, height));
        }
        x += width + kGap;
    }
}

double UIToolbar::widthOfItem(std::size_t index) const {
    const auto& view = itemViews_[index];
    if (!view)
        return items_[index]->width();
    if (items_[index]->width() > 0)
        return items_[index]->width();
    const bool isOwnButton = items_[index]->kind() != UIBarButtonItem::Kind::CustomView;
    return isOwnButton ? view->sizeThatFits({}).width : view->bounds().size.width;
}

double UIToolbar::heightOfItem(std::size_t index) const {
    const bool isOwnButton = items_[index]->kind() != UIBarButtonItem::Kind::CustomView;
    return isOwnButton ? bounds().size.height : itemViews_[index]->bounds().size.height;
}

void UIToolbar::drawRect(const CGRect& rect) {
    UIBarDrawing::drawBar(rect, UIBarDrawing::barColor(tintColor_, barStyle_), barStyle_,
                          UIBarDrawing::BarEdge::Top);
}

}
