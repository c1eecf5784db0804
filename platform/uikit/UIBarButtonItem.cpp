#include "platform/uikit/UIBarButtonItem.h"

#include "platform/uikit/UIBarSymbols.h"

namespace vistrel {

namespace {

UIBarButtonItemStyle styleOf(UIBarButtonSystemItem item) {
    switch (item) {
    case UIBarButtonSystemItem::Done:
    case UIBarButtonSystemItem::Save:
        return UIBarButtonItemStyle::Done;
    case UIBarButtonSystemItem::Cancel:
    case UIBarButtonSystemItem::Edit:
        return UIBarButtonItemStyle::Bordered;
    default:
        return UIBarButtonItemStyle::Plain;
    }
}

}

std::shared_ptr<UIBarButtonItem> UIBarButtonItem::withTitle(std::string title,
                                                            UIBarButtonItemStyle style,
                                                            std::function<void()> action) {
    std::shared_ptr<UIBarButtonItem> item(new UIBarButtonItem);
    item->title_ = std::move(title);
    item->style_ = style;
    item->action_ = std::move(action);
    return item;
}

std::shared_ptr<UIBarButtonItem> UIBarButtonItem::withImage(std::shared_ptr<const UIImage> image,
                                                            UIBarButtonItemStyle style,
                                                            std::function<void()> action) {
    std::shared_ptr<UIBarButtonItem> item(new UIBarButtonItem);
    item->kind_ = Kind::Image;
    item->image_ = std::move(image);
    item->style_ = style;
    item->action_ = std::move(action);
    return item;
}

std::shared_ptr<UIBarButtonItem>
UIBarButtonItem::withBarButtonSystemItem(UIBarButtonSystemItem systemItem,
                                         std::function<void()> action) {
    std::shared_ptr<UIBarButtonItem> item(new UIBarButtonItem);
    item->kind_ = Kind::SystemItem;
    item->systemItem_ = systemItem;
    item->style_ = styleOf(systemItem);
    item->action_ = std::move(action);
    item->accessibilityLabel_ = UIBarSymbols::name(systemItem);
    if (!UIBarSymbols::isSymbol(systemItem))
        item->title_ = item->accessibilityLabel_;
    return item;
}

std::shared_ptr<UIBarButtonItem> UIBarButtonItem::withCustomView(std::shared_ptr<UIView> view) {
    std::shared_ptr<UIBarButtonItem> item(new UIBarButtonItem);
    item->kind_ = Kind::CustomView;
    item->customView_ = std::move(view);
    return item;
}

void UIBarButtonItem::setTitle(std::string title) {
    if (title_ == title)
        return;
    title_ = std::move(title);
    if (changed_)
        changed_();
}

void UIBarButtonItem::setStyle(UIBarButtonItemStyle style) {
    if (style_ == style)
        return;
    style_ = style;
    if (changed_)
        changed_();
}

void UIBarButtonItem::setWidth(double width) {
    width_ = width;
    if (changed_)
        changed_();
}

void UIBarButtonItem::setEnabled(bool enabled) {
    if (enabled_ == enabled)
        return;
    enabled_ = enabled;
    if (changed_)
        changed_();
}

void UIBarButtonItem::perform() {
    if (!enabled_ || !action_)
        return;
    const auto action = action_;
    action();
}

}
