#include "platform/uikit/UIButton.h"

#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIImageTone.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UITouchGlow.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

constexpr double kDisabledAlpha = 0.45;
constexpr double kImageToTitleGap = 5;

template <typename T>
const T* valueForState(const std::map<UIControlState, T>& values, UIControlState state) {
    const auto own = values.find(state);
    if (own != values.end())
        return &own->second;
    const auto normal = values.find(UIControlState::Normal);
    return normal == values.end() ? nullptr : &normal->second;
}

UIControlState stateOf(const UIControl& control) {
    if (!control.isEnabled())
        return UIControlState::Disabled;
    if (control.isHighlighted())
        return UIControlState::Highlighted;
    return control.isSelected() ? UIControlState::Selected : UIControlState::Normal;
}

}

std::shared_ptr<UIButton> UIButton::buttonWithType(UIButtonType) {
    return std::make_shared<UIButton>();
}

UIButton::UIButton(CGRect frame)
    : UIControl(frame)
    , titleLabel_(std::make_shared<UILabel>()) {
    UIView::setOpaque(false);
    titleLabel_->setFont(UIFont::boldSystemFontOfSize(15));
    titleLabel_->setTextColor(UIColor::whiteColor());
    titleLabel_->setTextAlignment(UITextAlignment::Center);
    titleLabel_->setHidden(true);
    UIView::addSubview(titleLabel_);
}

UIButton::~UIButton() = default;

void UIButton::setTitleForState(std::string title, UIControlState state) {
    titles_[state] = std::move(title);
    stateChanged();
}

std::string UIButton::titleForState(UIControlState state) const {
    const std::string* title = valueForState(titles_, state);
    return title ? *title : std::string();
}

std::string UIButton::currentTitle() const {
    return titleForState(stateOf(*this));
}

void UIButton::setTitleColorForState(const UIColor& color, UIControlState state) {
    titleColors_[state] = color;
    stateChanged();
}

void UIButton::setTitleShadowColorForState(const UIColor& color, UIControlState state) {
    titleShadowColors_[state] = color;
    stateChanged();
}

void UIButton::setImageForState(std::shared_ptr<const UIImage> image, UIControlState state) {
    images_[state] = std::move(image);
    stateChanged();
}

std::shared_ptr<const UIImage> UIButton::currentImage() const {
    const auto* image = valueForState(images_, stateOf(*this));
    return image ? *image : nullptr;
}

void UIButton::setBackgroundImageForState(std::shared_ptr<const UIImage> image,
                                          UIControlState state) {
    backgroundImages_[state] = std::move(image);
    stateChanged();
}

std::shared_ptr<const UIImage> UIButton::currentBackgroundImage() const {
    const auto* image = valueForState(backgroundImages_, stateOf(*this));
    return image ? *image : nullptr;
}

UILabel& UIButton::titleLabel() {
    return *titleLabel_;
}

void UIButton::setShowsTouchWhenHighlighted(bool shows) {
    showsTouch_ = shows;
}

void UIButton::setAdjustsImageWhenHighlighted(bool adjusts) {
    adjustsHighlighted_ = adjusts;
}

void UIButton::setEnabled(bool enabled) {
    UIControl::setEnabled(enabled);
    stateChanged();
}

void UIButton::setHighlighted(bool highlighted) {
    UIControl::setHighlighted(highlighted);
    const bool glows = highlighted && showsTouch_;
    if (glows && !glow_) {
        glow_ = std::make_shared<UITouchGlow>(CGPoint{bounds().midX(), bounds().midY()});
        addSubview(glow_);
    } else if (!glows && glow_) {
        glow_->removeFromSuperview();
        glow_ = nullptr;
    }
    stateChanged();
}

void UIButton::setSelected(bool selected) {
    UIControl::setSelected(selected);
    stateChanged();
}

void UIButton::stateChanged() {
    const UIControlState state = stateOf(*this);
    titleLabel_->setText(titleForState(state));
    titleLabel_->setHidden(titleLabel_->text().empty());
    if (const UIColor* color = valueForState(titleColors_, state))
        titleLabel_->setTextColor(*color);
    if (const UIColor* shadow = valueForState(titleShadowColors_, state))
        titleLabel_->setShadowColor(*shadow);
    setNeedsLayout();
    setNeedsDisplay();
}

CGRect UIButton::imageRect() const {
    const auto image = currentImage();
    if (!image)
        return {};
    const CGSize size{std::min(image->size().width, bounds().size.width),
                      std::min(image->size().height, bounds().size.height)};
    double x = bounds().midX() - size.width / 2;
    if (!titleLabel_->text().empty()) {
        const double title = sizeWithFont(titleLabel_->text(), titleLabel_->font()).width;
        x = std::max(bounds().minX(), x - (title + kImageToTitleGap) / 2);
    }
    return {{std::floor(x), std::floor(bounds().midY() - size.height / 2)}, size};
}

void UIButton::layoutSubviews() {
    if (!currentImage()) {
        titleLabel_->setFrame(bounds());
        return;
    }
    const double x = imageRect().maxX() + kImageToTitleGap;
    const double title = std::ceil(sizeWithFont(titleLabel_->text(), titleLabel_->font()).width);
    const double width = std::clamp(bounds().maxX() - x, 0.0, title);
    titleLabel_->setFrame({{x, bounds().minY()}, {width, bounds().size.height}});
}

CGSize UIButton::sizeThatFits(CGSize) const {
    const auto background = currentBackgroundImage();
    const auto image = currentImage();
    CGSize size = image ? image->size() : CGSize{};
    if (!titleLabel_->text().empty()) {
        const CGSize title = sizeWithFont(titleLabel_->text(), titleLabel_->font());
        size.width += std::ceil(title.width) + (image ? kImageToTitleGap : 0);
        size.height = std::max(size.height, std::ceil(title.height));
    }
    if (background && background->leftCapWidth() == 0) {
        size.width = std::max(size.width, background->size().width);
        size.height = std::max(size.height, background->size().height);
    }
    return size;
}

bool UIButton::drawsContent() const {
    return currentImage() || currentBackgroundImage();
}

void UIButton::drawRect(const CGRect& rect) {
    drawPicture(backgroundImages_, rect);
    drawPicture(images_, imageRect());
}

void UIButton::drawPicture(const ByState<std::shared_ptr<const UIImage>>& pictures,
                           const CGRect& rect) {
    const UIControlState state = stateOf(*this);
    const auto* found = valueForState(pictures, state);
    if (!found || !*found || rect.isEmpty())
        return;
    const bool isOwnPicture = pictures.contains(state);
    if (!isOwnPicture && state == UIControlState::Highlighted && adjustsHighlighted_)
        darkenedImage(**found)->drawInRect(rect);
    else if (!isOwnPicture && state == UIControlState::Disabled)
        fadedImage(**found, kDisabledAlpha)->drawInRect(rect);
    else
        (*found)->drawInRect(rect);
}

UIAccessibilityElement UIButton::accessibilityElement() const {
    UIAccessibilityElement element = UIView::accessibilityElement();
    if (element.role == UIAccessibilityRole::None)
        element.role = UIAccessibilityRole::Button;
    if (element.label.empty())
        element.label = currentTitle();
    element.enabled = isEnabled();
    return element;
}

}
