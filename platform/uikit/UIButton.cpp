#include "platform/uikit/UIButton.h"

#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIImageTone.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UITouchGlow.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

constexpr double kRoundedRadius = 10;
constexpr double kDisabledAlpha = 0.45;
constexpr double kImageToTitleGap = 5;
constexpr UIColor kRoundedTitleColor =
    UIColor::colorWithRedGreenBlueAlpha(0.196F, 0.31F, 0.522F, 1);

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

std::shared_ptr<UIButton> UIButton::buttonWithType(UIButtonType type) {
    return std::make_shared<UIButton>(CGRect{}, type);
}

UIButton::UIButton(CGRect frame, UIButtonType type)
    : UIControl(frame)
    , type_(type)
    , titleLabel_(std::make_shared<UILabel>()) {
    UIView::setOpaque(false);
    titleLabel_->setFont(UIFont::boldSystemFontOfSize(15));
    titleLabel_->setTextColor(UIColor::whiteColor());
    titleLabel_->setTextAlignment(UITextAlignment::Center);
    titleLabel_->setHidden(true);
    UIView::addSubview(titleLabel_);
    if (type == UIButtonType::RoundedRect) {
        titleColors_[UIControlState::Normal] = kRoundedTitleColor;
        titleColors_[UIControlState::Highlighted] = UIColor::whiteColor();
    }
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

void UIButton::setAdjustsImageWhenDisabled(bool adjusts) {
    adjustsDisabled_ = adjusts;
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
    if (type_ == UIButtonType::RoundedRect) {
        size.width += 24;
        size.height = std::max(size.height + 18, 37.0);
    }
    if (background && background->leftCapWidth() == 0) {
        size.width = std::max(size.width, background->size().width);
        size.height = std::max(size.height, background->size().height);
    }
    return size;
}

bool UIButton::drawsContent() const {
    return type_ == UIButtonType::RoundedRect || currentImage() || currentBackgroundImage();
}

void UIButton::drawRect(const CGRect& rect) {
    if (type_ == UIButtonType::RoundedRect)
        drawRoundedRect(rect);
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
    if (!isOwnPicture && state == UIControlState::Highlighted && adjustsHighlighted_) {
        darkenedImage(**found)->drawInRect(rect);
    } else if (!isOwnPicture && state == UIControlState::Disabled && adjustsDisabled_) {
        fadedImage(**found, kDisabledAlpha)->drawInRect(rect);
    } else {
        (*found)->drawInRect(rect);
    }
}

void UIButton::drawRoundedRect(const CGRect& rect) {
    CGContext& context = *UIGraphicsGetCurrentContext();
    const CGRect edge = rect.insetBy(0.5, 0.5);
    context.saveGState();
    context.beginPath();
    context.addRoundedRect(edge, kRoundedRadius);
    context.clipToPath();
    const CGGradient pressed{{UIColor::colorWithRedGreenBlueAlpha(0.02F, 0.55F, 0.96F, 1),
                              UIColor::colorWithRedGreenBlueAlpha(0.0F, 0.36F, 0.9F, 1)},
                             {}};
    const CGGradient plain{{UIColor::whiteColor(), UIColor::whiteColor()}, {}};
    context.drawLinearGradient(isHighlighted() ? pressed : plain, edge.origin,
                               {edge.minX(), edge.maxY()});
    context.restoreGState();
    context.setStrokeColor(UIColor::colorWithWhiteAlpha(0.67F, 1));
    context.setLineWidth(1);
    context.beginPath();
    context.addRoundedRect(edge, kRoundedRadius);
    context.strokePath();
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
