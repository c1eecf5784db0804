#include "platform/uikit/UINavigationItem.h"

#include "platform/uikit/UIView.h"

namespace vistrel {

UINavigationItem::UINavigationItem(std::string title)
    : title_(std::move(title)) {}

void UINavigationItem::setTitle(std::string title) {
    if (title_ == title)
        return;
    title_ = std::move(title);
    changed(false);
}

void UINavigationItem::setLeftBarButtonItem(std::shared_ptr<UIBarButtonItem> item, bool animated) {
    if (left_ == item)
        return;
    left_ = std::move(item);
    changed(animated);
}

void UINavigationItem::setRightBarButtonItem(std::shared_ptr<UIBarButtonItem> item, bool animated) {
    if (right_ == item)
        return;
    right_ = std::move(item);
    changed(animated);
}

void UINavigationItem::changed(bool animated) const {
    if (changed_)
        changed_(animated);
}

}
