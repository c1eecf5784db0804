#include "platform/uikit/UIAlertPanel.h"

#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIBarDrawing.h"
#include "platform/uikit/UIButtonKeys.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIGlossyButton.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UIScrollView.h"
#include "platform/uikit/UITextField.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vistrel {

namespace {

constexpr double kWidth = 284;
constexpr double kSide = 12;
constexpr double kTop = 16;
constexpr double kBottom = 14;
constexpr double kTextGap = 6;
constexpr double kButtonsGap = 14;
constexpr double kButtonHeight = 43;
constexpr double kButtonGap = 8;
constexpr double kRadius = 12;
constexpr double kScrollInset = 8;
constexpr int kMostTitleLines = 3;
constexpr double kFieldHeight = 31;
constexpr double kFieldGap = 6;
constexpr double kFieldInset = 8;

constexpr UIColor kBody = UIColor::colorWithRedGreenBlueAlpha(0.07F, 0.13F, 0.31F, 0.95F);
constexpr UIColor kButtonColor = UIColor::colorWithRedGreenBlueAlpha(0.2F, 0.27F, 0.45F, 1);
constexpr UIColor kCancelColor = UIColor::colorWithRedGreenBlueAlpha(0.1F, 0.15F, 0.3F, 1);

}

UIAlertPanel::UIAlertPanel(const Content& content, double maximumHeight,
                           std::function<void(int)> chosen)
    : chosen_(std::move(chosen))
    , fields_(content.fields) {
    UIView::setOpaque(false);
    if (!content.title.empty())
        title_ = addText(content.title, 18, true);
    if (title_)
        title_->setNumberOfLines(kMostTitleLines);
    if (!content.message.empty())
        message_ = addText(content.message, 16, false);
    addFields();
    makeButtons(content);
    layOut(maximumHeight, rowCount(content.rows));
    std::string spoken = content.title;
    if (!content.message.empty())
        spoken += (spoken.empty() ? "" : "\n") + content.message;
    setAccessibility({UIAccessibilityRole::Alert, spoken, {}, true});
}

std::shared_ptr<UILabel> UIAlertPanel::addText(const std::string& text, double fontSize,
                                               bool bold) {
    auto label = std::make_shared<UILabel>();
    label->setFont(bold ? UIFont::boldSystemFontOfSize(fontSize)
                        : UIFont::systemFontOfSize(fontSize));
    label->setTextColor(UIColor::whiteColor());
    label->setShadowColor(UIColor::colorWithWhiteAlpha(0, 0.5F));
    label->setTextAlignment(UITextAlignment::Center);
    label->setNumberOfLines(0);
    label->setText(text);
    addSubview(label);
    return label;
}

void UIAlertPanel::addFields() {
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        addSubview(fields_[i]);
        const auto next = i + 1 < fields_.size() ? fields_[i + 1] : nullptr;
        fields_[i]->addTarget(
            [this, next] {
                if (next)
                    UIApplication::sharedApplication().events().setFirstResponder(next);
                else
                    chosen_(default_);
            },
            UIControlEventEditingDidEndOnExit);
    }
}

double UIAlertPanel::fieldsHeight() const {
    const double count = static_cast<double>(fields_.size());
    return count == 0 ? 0 : kButtonsGap + count * kFieldHeight + (count - 1) * kFieldGap;
}

void UIAlertPanel::layOutFields(double top) {
    for (std::size_t i = 0; i < fields_.size(); ++i)
        fields_[i]->setFrame(
            CGRectMake(kSide + kFieldInset,
                       top + kButtonsGap + static_cast<double>(i) * (kFieldHeight + kFieldGap),
                       kWidth - 2 * (kSide + kFieldInset), kFieldHeight));
}

void UIAlertPanel::makeButtons(const Content& content) {
    const int count = static_cast<int>(content.buttons.size());
    default_ = count > 1 ? 1 : 0;
    for (int index = 0; index < count; ++index) {
        UIGlossyButton::Look look;
        look.body = index == 0 && count > 1 ? kCancelColor : kButtonColor;
        look.title = UIColor::whiteColor();
        look.shadow = UIColor::colorWithWhiteAlpha(0, 0.6F);
        auto button = std::make_shared<UIGlossyButton>(
            content.buttons[static_cast<std::size_t>(index)], look);
        button->addTarget([this, index] { chosen_(index); }, UIControlEventTouchUpInside);
        addSubview(button);
        buttons_.push_back(std::move(button));
    }
}

const std::shared_ptr<UIGlossyButton>& UIAlertPanel::button(int index) const {
    return buttons_.at(static_cast<std::size_t>(index));
}

int UIAlertPanel::rowCount(int rows) const {
    const int count = static_cast<int>(buttons_.size());
    if (rows > 0)
        return std::min(rows, count);
    return count == 2 ? 1 : count;
}

void UIAlertPanel::layOut(double maximumHeight, int rows) {
    const double buttons = rows * kButtonHeight + std::max(0, rows - 1) * kButtonGap;
    const double below = (rows > 0 ? kButtonsGap + buttons : 0) + fieldsHeight() + kBottom;
    double y = kTop;
    if (title_) {
        const double height = title_->sizeThatFits({kWidth - 2 * kSide, 0}).height;
        title_->setFrame(CGRectMake(kSide, y, kWidth - 2 * kSide, height));
        y += height + (message_ ? kTextGap : 0);
    }
    if (message_)
        y += layOutMessage(y, maximumHeight - y - below);
    layOutFields(y);
    layOutButtons(y + fieldsHeight() + kButtonsGap, rows);
    setBounds(CGRectMake(0, 0, kWidth, std::ceil(y + below)));
}

double UIAlertPanel::layOutMessage(double top, double space) {
    const double width = kWidth - 2 * kSide;
    const double height = message_->sizeThatFits({width, 0}).height;
    if (height <= space) {
        message_->setFrame(CGRectMake(kSide, top, width, height));
        return height;
    }
    const double inner = width - 2 * kScrollInset;
    message_->setTextAlignment(UITextAlignment::Left);
    const double full = message_->sizeThatFits({inner, 0}).height;
    scroll_ = std::make_shared<UIScrollView>(CGRectMake(kSide, top, width, std::floor(space)));
    scroll_->setOpaque(false);
    scroll_->setIndicatorStyle(UIScrollViewIndicatorStyle::White);
    scroll_->setContentSize({width, full + 2 * kScrollInset});
    message_->removeFromSuperview();
    message_->setFrame(CGRectMake(kScrollInset, kScrollInset, inner, full));
    scroll_->addSubview(message_);
    addSubview(scroll_);
    return std::floor(space);
}

void UIAlertPanel::layOutButtons(double top, int rows) {
    if (rows == 0)
        return;
    const int count = static_cast<int>(buttons_.size());
    const int perRow = (count + rows - 1) / rows;
    const double width = (kWidth - 2 * kSide - (perRow - 1) * kButtonGap) / perRow;
    for (int index = 0; index < count; ++index) {
        // In a stack the cancel button comes last.
        const int place = perRow > 1 ? index : (index + count - 1) % count;
        const int row = place / perRow;
        const int column = place % perRow;
        const double x = kSide + column * (width + kButtonGap);
        const double y = top + row * (kButtonHeight + kButtonGap);
        button(index)->setFrame(CGRectMake(x, y, width, kButtonHeight));
    }
}

void UIAlertPanel::flashScrollIndicators() {
    if (scroll_)
        scroll_->flashScrollIndicators();
}

void UIAlertPanel::mark(int index) {
    default_ = index;
    for (int other = 0; other < static_cast<int>(buttons_.size()); ++other)
        button(other)->setMarked(other == index);
}

std::shared_ptr<UIView> UIAlertPanel::focusedPart() {
    return buttons_.empty() ? shared_from_this() : button(default_);
}

bool UIAlertPanel::keyPressed(const UIKey& key) {
    const auto self = shared_from_this();
    const int count = static_cast<int>(buttons_.size());
    const bool scrolls = scroll_ && key.code != UIKeyCode::Tab && key.code != UIKeyCode::Left &&
                         key.code != UIKeyCode::Right;
    if (key.code == UIKeyCode::Escape)
        chosen_(0);
    else if ((key.code == UIKeyCode::Enter || key.code == UIKeyCode::Space) && count > 0)
        chosen_(default_);
    else if (scrolls)
        scroll_->keyPressed(key);
    else if (count > 0)
        mark(buttonAfterKey(key, default_, count));
    return true;
}

void UIAlertPanel::drawRect(const CGRect& rect) {
    CGContext& context = *UIGraphicsGetCurrentContext();
    const CGRect box = rect.insetBy(1, 1);
    context.setFillColor(kBody);
    context.beginPath();
    context.addRoundedRect(box, kRadius);
    context.fillPath();
    context.saveGState();
    context.beginPath();
    context.addRoundedRect(box, kRadius);
    context.clipToPath();
    // The gloss: a bright cap that ends in an arc.
    const double reach = 34;
    const double radius = rect.size.width * 1.4;
    context.beginPath();
    context.arc(rect.midX(), rect.minY() + reach - radius, radius, 0, 2 * std::numbers::pi);
    context.clipToPath();
    const CGGradient gloss{
        {UIColor::colorWithWhiteAlpha(1, 0.5F), UIColor::colorWithWhiteAlpha(1, 0.12F)}, {}};
    context.drawLinearGradient(gloss, rect.origin, {rect.minX(), rect.minY() + reach});
    context.restoreGState();
    context.setStrokeColor(UIColor::colorWithWhiteAlpha(0.92F, 0.85F));
    context.setLineWidth(2);
    context.beginPath();
    context.addRoundedRect(box, kRadius);
    context.strokePath();
    context.setFillColor(UIColor::whiteColor());
    for (const auto& field : fields_) {
        context.beginPath();
        context.addRoundedRect(field->frame().insetBy(-kFieldInset, 0), 5);
        context.fillPath();
    }
    if (!scroll_)
        return;
    context.setFillColor(UIColor::colorWithWhiteAlpha(0, 0.3F));
    context.beginPath();
    context.addRoundedRect(scroll_->frame(), 5);
    context.fillPath();
}

}
