#pragma once
#include <functional>
#include <memory>
#include <string>

namespace vistrel {
class UIImage;
class UIView;

enum class UIBarButtonItemStyle { Plain = 0, Bordered = 1, Done = 2 };
/// Numbers are the phone's.
enum class UIBarButtonSystemItem {
    Done = 0,
    Cancel = 1,
    Edit = 2,
    Save = 3,
    Add = 4,
    FlexibleSpace = 5,
    FixedSpace = 6,
    Action = 9,
    Refresh = 13,
    Stop = 14,
    Play = 17,
    Pause = 18
};

/// A button of a navigation bar or toolbar: a title, a picture, a system item or a custom
/// view.
class UIBarButtonItem {
public:
    static std::shared_ptr<UIBarButtonItem> withTitle(std::string title, UIBarButtonItemStyle style,
                                                      std::function<void()> action);
    static std::shared_ptr<UIBarButtonItem> withImage(std::shared_ptr<const UIImage> image,
                                                      UIBarButtonItemStyle style,
                                                      std::function<void()> action);
    static std::shared_ptr<UIBarButtonItem>
    withBarButtonSystemItem(UIBarButtonSystemItem systemItem, std::function<void()> action);
    static std::shared_ptr<UIBarButtonItem> withCustomView(std::shared_ptr<UIView> view);

    enum class Kind { Title, Image, SystemItem, CustomView };
    Kind kind() const { return kind_; }
    const std::string& title() const { return title_; }
    void setTitle(std::string title);
    UIBarButtonItemStyle style() const { return style_; }
    void setStyle(UIBarButtonItemStyle style);
    const std::shared_ptr<const UIImage>& image() const { return image_; }
    UIBarButtonSystemItem systemItem() const { return systemItem_; }
    const std::shared_ptr<UIView>& customView() const { return customView_; }
    bool isFlexibleSpace() const {
        return kind_ == Kind::SystemItem && systemItem_ == UIBarButtonSystemItem::FlexibleSpace;
    }

    /// In a toolbar; 0: as wide as the content needs.
    double width() const { return width_; }
    void setWidth(double width);

    int tag() const { return tag_; }
    void setTag(int tag) { tag_ = tag; }
    bool isEnabled() const { return enabled_; }
    void setEnabled(bool enabled);
    /// What screen readers say for a picture or system item; defaults to the system item's name.
    const std::string& accessibilityLabel() const { return accessibilityLabel_; }
    void setAccessibilityLabel(std::string label) { accessibilityLabel_ = std::move(label); }

    /// Runs the action when enabled.
    void perform();
    /// Called on each change; set by the bar that shows the item.
    void setChangeHandler(std::function<void()> handler) { changed_ = std::move(handler); }

private:
    UIBarButtonItem() = default;

    Kind kind_ = Kind::Title;
    std::string title_;
    UIBarButtonItemStyle style_ = UIBarButtonItemStyle::Plain;
    std::shared_ptr<const UIImage> image_;
    UIBarButtonSystemItem systemItem_ = UIBarButtonSystemItem::Done;
    std::shared_ptr<UIView> customView_;
    std::function<void()> action_;
    std::string accessibilityLabel_;
    double width_ = 0;
    int tag_ = 0;
    bool enabled_ = true;
    std::function<void()> changed_;
};

}
