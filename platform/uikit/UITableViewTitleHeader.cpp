#include "platform/uikit/UITableViewTitleHeader.h"

#include "platform/uikit/CAGradientLayer.h"
#include "platform/uikit/UILabel.h"

namespace vistrel {

namespace {

std::shared_ptr<UIView> line(const UIColor& color) {
    auto view = std::make_shared<UIView>();
    view->setOpaque(false);
    view->setBackgroundColor(color);
    return view;
}

/// The heading is the label's to tell.
class HeadingLabel : public UILabel {
public:
    UIAccessibilityElement accessibilityElement() const override {
        return {UIAccessibilityRole::Heading, text(), {}, true};
    }
};

}

UITableViewTitleHeader::UITableViewTitleHeader(std::string title)
    : shade_(std::make_shared<CAGradientLayer>())
    , topLine_(line({0.65F, 0.68F, 0.73F, 0.9F}))
    , bottomLine_(line({0.35F, 0.38F, 0.43F, 0.9F}))
    , label_(std::make_shared<HeadingLabel>()) {
    setOpaque(false);
    shade_->gradient = {{{0.48F, 0.52F, 0.58F, 0.9F}, {0.67F, 0.70F, 0.74F, 0.9F}}, {}};
    insertGradientLayerAtIndex(shade_, 0);
    label_->setOpaque(false);
    label_->setFont(UIFont::boldSystemFontOfSize(18));
    label_->setTextColor(UIColor::whiteColor());
    label_->setShadowColor(UIColor::colorWithWhiteAlpha(0.25F, 0.8F));
    label_->setShadowOffset({0, 1});
    label_->setText(std::move(title));
    addSubview(topLine_);
    addSubview(bottomLine_);
    addSubview(label_);
}

void UITableViewTitleHeader::layoutSubviews() {
    const CGSize size = bounds().size;
    shade_->frame = bounds();
    topLine_->setFrame(CGRectMake(0, 0, size.width, 1));
    bottomLine_->setFrame(CGRectMake(0, size.height - 1, size.width, 1));
    label_->setFrame(CGRectMake(12, 0, size.width - 24, size.height));
}

}
