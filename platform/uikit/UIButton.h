#pragma once
#include "platform/uikit/UIControl.h"

#include <map>
#include <memory>
#include <optional>
#include <string>

namespace vistrel {
class UIImage;
class UILabel;

/// The number is the phone's.
enum class UIButtonType { Custom = 0 };

/// A push button with a title, a picture and a background picture for each state.
class UIButton : public UIControl {
public:
    static std::shared_ptr<UIButton> buttonWithType(UIButtonType type);
    explicit UIButton(CGRect frame = {});
    ~UIButton() override;

    void setTitleForState(std::string title, UIControlState state);
    std::string titleForState(UIControlState state) const;
    std::string currentTitle() const;
    void setTitleColorForState(const UIColor& color, UIControlState state);
    void setTitleShadowColorForState(const UIColor& color, UIControlState state);
    void setImageForState(std::shared_ptr<const UIImage> image, UIControlState state);
    std::shared_ptr<const UIImage> currentImage() const;
    void setBackgroundImageForState(std::shared_ptr<const UIImage> image, UIControlState state);
    std::shared_ptr<const UIImage> currentBackgroundImage() const;
    /// For the font and shadow offset of the title.
    UILabel& titleLabel();
    void setShowsTouchWhenHighlighted(bool shows);
    /// Darkens pictures while highlighted; default true. While disabled they are always faded.
    void setAdjustsImageWhenHighlighted(bool adjusts);

    void setEnabled(bool enabled) override;
    void setHighlighted(bool highlighted) override;
    void setSelected(bool selected) override;
    CGSize sizeThatFits(CGSize size) const override;
    void layoutSubviews() override;
    bool drawsContent() const override;
    void drawRect(const CGRect& rect) override;
    UIAccessibilityElement accessibilityElement() const override;

private:
    template <typename T>
    using ByState = std::map<UIControlState, T>;

    void stateChanged();
    CGRect imageRect() const;
    void drawPicture(const ByState<std::shared_ptr<const UIImage>>& pictures, const CGRect& rect);

    ByState<std::string> titles_;
    ByState<UIColor> titleColors_;
    ByState<UIColor> titleShadowColors_;
    ByState<std::shared_ptr<const UIImage>> images_;
    ByState<std::shared_ptr<const UIImage>> backgroundImages_;
    std::shared_ptr<UILabel> titleLabel_;
    std::shared_ptr<UIView> glow_;
    bool showsTouch_ = false;
    bool adjustsHighlighted_ = true;
};

}
