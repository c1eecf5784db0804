#pragma once
#include "platform/uikit/UIBarButtonItem.h"
#include "platform/uikit/UIBarStyle.h"
#include "platform/uikit/UIView.h"

#include <optional>

namespace vistrel {

/// A row of items; flexible spaces share the remaining width. The same item object may appear
/// several times.
class UIToolbar : public UIView {
public:
    explicit UIToolbar(CGRect frame = CGRectMake(0, 0, 320, 44));
    ~UIToolbar() override;

    const std::vector<std::shared_ptr<UIBarButtonItem>>& items() const { return items_; }
    void setItems(std::vector<std::shared_ptr<UIBarButtonItem>> items, bool animated = false);
    void setTintColor(std::optional<UIColor> color);
    const std::optional<UIColor>& tintColor() const { return tintColor_; }
    void setBarStyle(UIBarStyle style);

    void layoutSubviews() override;
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;

private:
    void rebuild();
    void replaceViews(std::vector<std::shared_ptr<UIView>> views,
                      const std::vector<std::shared_ptr<UIView>>& added, bool animated);
    void observe(UIBarButtonItem& item);
    void itemsChanged();
    double widthOfItem(std::size_t index) const;
    double heightOfItem(std::size_t index) const;

    std::vector<std::shared_ptr<UIBarButtonItem>> items_;
    std::vector<std::shared_ptr<UIView>> itemViews_; ///< one for each item, null for spaces
    std::optional<UIColor> tintColor_;
    UIBarStyle barStyle_ = UIBarStyle::Default;
};

}
