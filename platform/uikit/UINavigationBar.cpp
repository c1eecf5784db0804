#include "platform/uikit/UINavigationBar.h"

#include "platform/foundation/NSBundle.h"
#include "platform/foundation/Weakly.h"
#include "platform/uikit/UIBarButton.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UINavigationBarChange.h"
#include "platform/uikit/UIViewAnimation.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vistrel {

namespace {

constexpr double kMargin = 5;
constexpr double kTitleGap = 8;
constexpr double kSlideSeconds = 0.35;
constexpr double kFadeSeconds = 0.25;
constexpr double kTitleTravel = 110;
constexpr double kSideTravel = 40;
/// The back button does not show a longer title.
constexpr double kLongestBackTitle = 110;

std::shared_ptr<UILabel> makeTitleLabel(const std::string& title) {
    auto label = std::make_shared<UILabel>();
    label->setFont(UIFont::boldSystemFontOfSize(20));
    label->setTextColor(UIColor::whiteColor());
    label->setShadowColor(UIColor::colorWithWhiteAlpha(0, 0.55F));
    label->setTextAlignment(UITextAlignment::Center);
    label->setText(title);
    label->setAccessibility({UIAccessibilityRole::Heading, title, {}, true});
    return label;
}

double widthOf(const std::shared_ptr<UIView>& view) {
    if (!view)
        return 0;
    const auto* button = dynamic_cast<const UIBarButton*>(view.get());
    return button ? button->sizeThatFits({}).width : view->bounds().size.width;
}

void placeSide(UIView& view, double x, double barHeight) {
    const bool isButton = dynamic_cast<const UIBarButton*>(&view) != nullptr;
    const double height = isButton ? barHeight : view.bounds().size.height;
    const double width = isButton ? view.sizeThatFits({}).width : view.bounds().size.width;
    view.setFrame(CGRectMake(x, std::floor((barHeight - height) / 2), width, height));
}

}

UINavigationBar::UINavigationBar(CGRect frame)
    : UIView(frame) {}

UINavigationBar::~UINavigationBar() = default;

void UINavigationBar::setTintColor(std::optional<UIColor> color) {
    tintColor_ = color;
    left_ = {std::exchange(left_.view, nullptr), nullptr, {}};
    right_ = {std::exchange(right_.view, nullptr), nullptr, {}};
    rebuild(false, Direction::None);
    setNeedsDisplay();
}

void UINavigationBar::setBarStyle(UIBarStyle style) {
    barStyle_ = style;
    setOpaque(style != UIBarStyle::BlackTranslucent);
    setTintColor(tintColor_);
}

UIColor UINavigationBar::color() const {
    return UIBarDrawing::barColor(tintColor_, barStyle_);
}

void UINavigationBar::pushNavigationItem(std::shared_ptr<UINavigationItem> item, bool animated) {
    observe(*item);
    items_.push_back(std::move(item));
    rebuild(animated, Direction::Push);
}

std::shared_ptr<UINavigationItem> UINavigationBar::popNavigationItemAnimated(bool animated) {
    if (items_.empty())
        return nullptr;
    auto popped = std::move(items_.back());
    items_.pop_back();
    popped->setChangeHandler({});
    rebuild(animated, Direction::Pop);
    return popped;
}

void UINavigationBar::setItems(std::vector<std::shared_ptr<UINavigationItem>> items,
                               bool animated) {
    const bool grows = items.size() >= items_.size();
    for (const auto& item : items_)
        item->setChangeHandler({});
    items_ = std::move(items);
    for (const auto& item : items_)
        observe(*item);
    rebuild(animated, grows ? Direction::Push : Direction::Pop);
}

UINavigationItem* UINavigationBar::topItem() const {
    return items_.empty() ? nullptr : items_.back().get();
}

UINavigationItem* UINavigationBar::backItem() const {
    return items_.size() < 2 ? nullptr : items_[items_.size() - 2].get();
}

void UINavigationBar::observe(UINavigationItem& item) {
    item.setChangeHandler(weakly(
        this,
        [](UINavigationBar& self, bool animated) { self.rebuild(animated, Direction::None); }));
}

void UINavigationBar::observe(const std::shared_ptr<UIBarButtonItem>& item) {
    if (item)
        item->setChangeHandler(weakly(this, &UINavigationBar::itemsChanged));
}

void UINavigationBar::itemsChanged() {
    for (const Slot* slot : {&left_, &right_})
        if (auto* button = dynamic_cast<UIBarButton*>(slot->view.get()))
            button->itemChanged();
    setNeedsLayout();
}

UINavigationBar::Slot UINavigationBar::leftSlot() const {
    const UINavigationItem* top = topItem();
    if (!top)
        return {};
    if (top->leftBarButtonItem())
        return {nullptr, top->leftBarButtonItem(), {}};
    const UINavigationItem* back = backItem();
    if (!back)
        return {};
    const auto tooLong = [](const std::string& title) {
        return sizeWithFont(title, UIFont::boldSystemFontOfSize(12)).width > kLongestBackTitle;
    };
    const bool usesTitle = !back->title().empty() && !tooLong(back->title());
    return {nullptr, items_[items_.size() - 2],
            usesTitle ? back->title() : NSLocalizedString("Back")};
}

UINavigationBar::Slot UINavigationBar::titleSlot() const {
    const UINavigationItem* top = topItem();
    if (!top)
        return {};
    return {nullptr, items_.back(), top->title()};
}

UINavigationBar::Slot UINavigationBar::rightSlot() const {
    const UINavigationItem* top = topItem();
    if (!top || !top->rightBarButtonItem())
        return {};
    return {nullptr, top->rightBarButtonItem(), {}};
}

std::shared_ptr<UIView> UINavigationBar::makeBackButton(const std::string& title) {
    auto item = UIBarButtonItem::withTitle(title, UIBarButtonItemStyle::Bordered,
                                           weakly(this, &UINavigationBar::goBack));
    return std::make_shared<UIBarButton>(std::move(item), UIBarButton::Place::NavigationBar,
                                         color(), UIBarDrawing::ButtonShape::Back);
}

void UINavigationBar::goBack() {
    if (!backAction_) {
        popNavigationItemAnimated(true);
        return;
    }
    const auto action = backAction_;
    action();
}

void UINavigationBar::rebuild(bool animated, Direction direction) {
    constexpr auto kPlace = UIBarButton::Place::NavigationBar;
    const double sign = direction == Direction::None ? 0 : direction == Direction::Push ? 1 : -1;
    const UINavigationItem* top = topItem();
    UINavigationBarChange change;

    Slot left = leftSlot();
    if (left.source && left.text.empty())
        left.view = UIBarButton::viewForItem(top->leftBarButtonItem(), kPlace, color());
    else if (left.source)
        left.view = makeBackButton(left.text);
    Slot right = rightSlot();
    if (right.source)
        right.view = UIBarButton::viewForItem(top->rightBarButtonItem(), kPlace, color());
    Slot title = titleSlot();
    if (title.source)
        title.view = makeTitleLabel(title.text);

    replaceSlot(left_, std::move(left), sign * kSideTravel, change);
    replaceSlot(title_, std::move(title), sign * kTitleTravel, change);
    replaceSlot(right_, std::move(right), 0, change);
    if (top) {
        observe(top->leftBarButtonItem());
        observe(top->rightBarButtonItem());
    }
    UIViewAnimation::withoutAnimation([this] { layoutSubviews(); });
    if (animated)
        change.animate(direction == Direction::None ? kFadeSeconds : kSlideSeconds,
                       weakly(this, &UINavigationBar::removeFaded));
    else
        change.apply();
}

void UINavigationBar::replaceSlot(Slot& slot, Slot wanted, double distance,
                                  UINavigationBarChange& change) {
    if (slot.source == wanted.source && slot.text == wanted.text)
        return;
    const Slot old = std::exchange(slot, std::move(wanted));
    if (old.view && old.view != slot.view)
        change.leave(old.view, distance);
    if (slot.view) {
        slot.view->setAlpha(1);
        addSubview(slot.view);
        change.enter(slot.view, distance);
    }
}

void UINavigationBar::removeFaded(UIView& view) {
    view.setUserInteractionEnabled(true);
    const bool isBack =
        &view == left_.view.get() || &view == title_.view.get() || &view == right_.view.get();
    if (!isBack && view.superview() == this)
        view.removeFromSuperview();
}

void UINavigationBar::layoutSubviews() {
    if (left_.view)
        placeSide(*left_.view, kMargin, bounds().size.height);
    if (right_.view)
        placeSide(*right_.view, bounds().size.width - kMargin - widthOf(right_.view),
                  bounds().size.height);
    layoutTitle();
}

void UINavigationBar::layoutTitle() {
    if (!title_.view)
        return;
    const auto side = [](const Slot& slot) {
        return slot.view ? kMargin + widthOf(slot.view) + kTitleGap : kTitleGap;
    };
    const double from = side(left_);
    const double to = std::max(from, bounds().size.width - side(right_));
    const auto* label = dynamic_cast<const UILabel*>(title_.view.get());
    const CGSize wanted = label ? label->sizeThatFits({}) : title_.view->bounds().size;
    const double width = std::min(wanted.width, to - from);
    const double x = std::clamp(std::floor((bounds().size.width - width) / 2), from, to - width);
    title_.view->setFrame(CGRectMake(x, std::floor((bounds().size.height - wanted.height) / 2),
                                     width, wanted.height));
}

void UINavigationBar::drawRect(const CGRect& rect) {
    UIBarDrawing::drawBar(rect, color(), barStyle_, UIBarDrawing::BarEdge::Bottom);
}

}
