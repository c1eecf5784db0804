#pragma once
#include "platform/uikit/UIBarButtonItem.h"
#include "platform/uikit/UIBarDrawing.h"
#include "platform/uikit/UIControl.h"

#include <string>

namespace vistrel {

/// The view of one item in a bar: a bordered button, or a plain symbol or word that glows under the
/// finger. As tall as the bar, which makes it an easy target.
class UIBarButton : public UIControl {
public:
    enum class Place { NavigationBar, Toolbar };

    UIBarButton(std::shared_ptr<UIBarButtonItem> item, Place place, const UIColor& barColor,
                UIBarDrawing::ButtonShape shape = UIBarDrawing::ButtonShape::Rounded);

    /// The view for an item: its custom view, or a new button.
    static std::shared_ptr<UIView> viewForItem(const std::shared_ptr<UIBarButtonItem>& item,
                                               Place place, const UIColor& barColor);

    const std::shared_ptr<UIBarButtonItem>& item() const { return item_; }
    /// Updates from the item's title, style and enabled state.
    void itemChanged();

    CGSize sizeThatFits(CGSize size) const override;
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
    UIAccessibilityElement accessibilityElement() const override;

private:
    bool isBordered() const;
    double contentWidth() const;
    void drawContent(const CGRect& body) const;

    std::shared_ptr<UIBarButtonItem> item_;
    Place place_;
    UIColor barColor_;
    UIBarDrawing::ButtonShape shape_;
};

}
