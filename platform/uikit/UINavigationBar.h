#pragma once
#include "platform/uikit/UIBarStyle.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UIView.h"

#include <optional>

namespace vistrel {

/// The bar at the top: title, back button with the previous title, left and right items. Used by
/// the navigation controller, or alone with pushNavigationItem.
class UINavigationBar : public UIView {
public:
    explicit UINavigationBar(CGRect frame = CGRectMake(0, 0, 320, 44));
    ~UINavigationBar() override;

    const std::optional<UIColor>& tintColor() const { return tintColor_; }
    void setTintColor(std::optional<UIColor> color);
    UIBarStyle barStyle() const { return barStyle_; }
    void setBarStyle(UIBarStyle style);

    /// The items are not owned by the bar when they belong to controllers; a shared_ptr without
    /// ownership is fine.
    void pushNavigationItem(std::shared_ptr<UINavigationItem> item, bool animated);
    std::shared_ptr<UINavigationItem> popNavigationItemAnimated(bool animated);
    void setItems(std::vector<std::shared_ptr<UINavigationItem>> items, bool animated);
    UINavigationItem* topItem() const;
    UINavigationItem* backItem() const;
    /// What the back button does; the default pops the item.
    void setBackAction(std::function<void()> action) { backAction_ = std::move(action); }

    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
    void layoutSubviews() override;

private:
    void rebuild(bool animated, int direction);

    std::optional<UIColor> tintColor_;
    UIBarStyle barStyle_ = UIBarStyle::Default;
    std::vector<std::shared_ptr<UINavigationItem>> items_;
    std::shared_ptr<UIView> content_;
    std::function<void()> backAction_;
};

}
