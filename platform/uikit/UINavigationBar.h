#pragma once
#include "platform/uikit/UIBarStyle.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UIView.h"

#include <optional>
#include <string>
#include <vector>

namespace vistrel {
class UINavigationBarChange;

/// The bar at the top: title, back button with the previous title, left and right items. Used by
/// the navigation controller, or alone with pushNavigationItem.
class UINavigationBar : public UIView {
public:
    explicit UINavigationBar(CGRect frame = CGRectMake(0, 0, 320, 44));
    ~UINavigationBar() override;

    const std::optional<UIColor>& tintColor() const { return tintColor_; }
    void setTintColor(std::optional<UIColor> color);
    void setBarStyle(UIBarStyle style);

    /// The items are not owned by the bar when they belong to controllers; a shared_ptr without
    /// ownership is fine.
    void pushNavigationItem(std::shared_ptr<UINavigationItem> item, bool animated);
    std::shared_ptr<UINavigationItem> popNavigationItemAnimated(bool animated);
    void setItems(std::vector<std::shared_ptr<UINavigationItem>> items, bool animated);
    const std::vector<std::shared_ptr<UINavigationItem>>& items() const { return items_; }
    UINavigationItem* topItem() const;
    UINavigationItem* backItem() const;
    /// What the back button does; the default pops the item.
    void setBackAction(std::function<void()> action) { backAction_ = std::move(action); }

    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
    void layoutSubviews() override;

private:
    enum class Direction { None, Push, Pop };
    /// One of the three places; `source` tells whether its content is still the wanted one.
    struct Slot {
        std::shared_ptr<UIView> view;
        std::shared_ptr<const void> source;
        std::string text;
    };

    void rebuild(bool animated, Direction direction);
    Slot leftSlot() const;
    Slot titleSlot() const;
    Slot rightSlot() const;
    std::shared_ptr<UIView> makeBackButton(const std::string& title);
    void replaceSlot(Slot& slot, Slot wanted, double distance, UINavigationBarChange& change);
    void removeFaded(UIView& view);
    void itemsChanged();
    void observe(UINavigationItem& item);
    void observe(const std::shared_ptr<UIBarButtonItem>& item);
    void layoutTitle();
    void goBack();
    UIColor color() const;

    std::optional<UIColor> tintColor_;
    UIBarStyle barStyle_ = UIBarStyle::Default;
    std::vector<std::shared_ptr<UINavigationItem>> items_;
    Slot left_;
    Slot title_;
    Slot right_;
    std::function<void()> backAction_;
};

}
