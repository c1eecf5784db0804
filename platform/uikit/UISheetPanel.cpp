#include "platform/uikit/UISheetPanel.h"

#include "platform/uikit/UIBarDrawing.h"
#include "platform/uikit/UIButtonKeys.h"
#include "platform/uikit/UIGlossyButton.h"
#include "platform/uikit/UILabel.h"

#include <cmath>

namespace vistrel {

namespace {

constexpr double kSide = 22;
constexpr double kTop = 18;
constexpr double kBottom = 20;
constexpr double kButtonHeight = 46;
constexpr double kButtonGap = 8;
constexpr double kCancelGap = 20;
constexpr double kTitleGap = 12;

UIGlossyButton::Look lookOf(bool isCancel, bool isDestructive) {
    UIGlossyButton::Look look;
    look.fontSize = 19;
    look.radius = 9;
    look.title = UIColor::whiteColor();
    look.shadow = UIColor::colorWithWhiteAlpha(0, 0.6F);
    if (isDestructive) {
        look.body = UIColor::colorWithRedGreenBlueAlpha(0.72F, 0.08F, 0.1F, 1);
    } else if (isCancel) {
        look.body = UIColor::colorWithWhiteAlpha(0.12F, 1);
    } else {
        look.body = UIColor::colorWithWhiteAlpha(0.8F, 1);
        look.title = UIColor::colorWithWhiteAlpha(0.1F, 1);
        look.shadow = UIColor::colorWithWhiteAlpha(1, 0.5F);
    }
    return look;
}

}

UISheetPanel::UISheetPanel(const Content& content, double width, std::function<void(int)> chosen)
    : chosen_(std::move(chosen))
    , style_(content.style)
    , cancelIndex_(content.cancelIndex) {
    UIView::setOpaque(false);
    double y = kTop;
    if (!content.title.empty())
        y += addTitle(content.title, width);
    for (int index = 0; index < static_cast<int>(content.buttons.size()); ++index)
        y += addButton(content, index, y, width);
    setBounds(CGRectMake(0, 0, width, y - kButtonGap + kBottom));
    setAccessibility({UIAccessibilityRole::Alert, content.title, {}, true});
}

double UISheetPanel::addTitle(const std::string& title, double width) {
    auto label = std::make_shared<UILabel>();
    label->setFont(UIFont::systemFontOfSize(14));
    label->setTextColor(UIColor::whiteColor());
    label->setShadowColor(UIColor::colorWithWhiteAlpha(0, 0.5F));
    label->setTextAlignment(UITextAlignment::Center);
    label->setNumberOfLines(0);
    label->setText(title);
    const double height = label->sizeThatFits({width - 2 * kSide, 0}).height;
    label->setFrame(CGRectMake(kSide, kTop - 4, width - 2 * kSide, height));
    addSubview(label);
    return height - 4 + kTitleGap;
}

double UISheetPanel::addButton(const Content& content, int index, double y, double width) {
    const bool isCancel = index == content.cancelIndex;
    const double gap = isCancel && index > 0 ? kCancelGap - kButtonGap : 0;
    auto button =
        std::make_shared<UIGlossyButton>(content.buttons[static_cast<std::size_t>(index)],
                                         lookOf(isCancel, index == content.destructiveIndex));
    button->setFrame(CGRectMake(kSide, y + gap, width - 2 * kSide, kButtonHeight));
    button->addTarget([this, index] { chosen_(index); }, UIControlEventTouchUpInside);
    addSubview(button);
    buttons_.push_back(std::move(button));
    return gap + kButtonHeight + kButtonGap;
}

const std::shared_ptr<UIGlossyButton>& UISheetPanel::button(int index) const {
    return buttons_.at(static_cast<std::size_t>(index));
}

void UISheetPanel::mark(int index) {
    marked_ = index;
    for (int other = 0; other < static_cast<int>(buttons_.size()); ++other)
        button(other)->setMarked(other == index);
}

std::shared_ptr<UIView> UISheetPanel::focusedPart() {
    return marked_ < 0 ? shared_from_this() : button(marked_);
}

bool UISheetPanel::keyPressed(const UIKey& key) {
    const auto self = shared_from_this();
    const int count = static_cast<int>(buttons_.size());
    if (key.code == UIKeyCode::Escape && cancelIndex_ >= 0)
        chosen_(cancelIndex_);
    else if ((key.code == UIKeyCode::Enter || key.code == UIKeyCode::Space) && marked_ >= 0)
        chosen_(marked_);
    else
        mark(buttonAfterKey(key, marked_, count));
    return true;
}

void UISheetPanel::drawRect(const CGRect& rect) {
    CGContext& context = *UIGraphicsGetCurrentContext();
    const bool isBlack = style_ != UIActionSheetStyle::Default;
    const float alpha = style_ == UIActionSheetStyle::BlackOpaque ? 1.0F : 0.84F;
    const UIColor base = isBlack ? UIColor::colorWithWhiteAlpha(0.06F, alpha)
                                 : UIColor::colorWithRedGreenBlueAlpha(0.27F, 0.33F, 0.43F, 0.93F);
    context.setFillColor(base);
    context.fillRect(rect);
    const CGGradient gloss{{UIColor::colorWithWhiteAlpha(1, 0.34F),
                            UIColor::colorWithWhiteAlpha(1, 0.08F),
                            UIColor::colorWithWhiteAlpha(1, 0)},
                           {0, 0.7, 1}};
    context.saveGState();
    context.clipToRect(CGRectMake(rect.minX(), rect.minY(), rect.size.width, 24));
    context.drawLinearGradient(gloss, rect.origin, {rect.minX(), rect.minY() + 24});
    context.restoreGState();
    context.setFillColor(UIColor::colorWithWhiteAlpha(0, 0.9F));
    context.fillRect(CGRectMake(rect.minX(), rect.minY(), rect.size.width, 1));
    context.setFillColor(UIColor::colorWithWhiteAlpha(1, 0.3F));
    context.fillRect(CGRectMake(rect.minX(), rect.minY() + 1, rect.size.width, 1));
}

}
