#include "platform/uikit/UIProgressHUD.h"

#include "platform/uikit/UIActivityIndicatorView.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UIViewAnimation.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

constexpr double kFadeSeconds = 0.25;
constexpr double kPanelHeight = 110;
constexpr double kSmallestPanel = 130;
constexpr double kMargin = 20;
constexpr double kRadius = 12;
constexpr double kSpinnerMiddle = 44;

class HUDPanel : public UIView {
public:
    HUDPanel() { setOpaque(false); }

    bool drawsContent() const override { return true; }

    void drawRect(const CGRect& rect) override {
        CGContext& context = *UIGraphicsGetCurrentContext();
        context.setFillColor(UIColor::colorWithWhiteAlpha(0.04F, 0.78F));
        context.beginPath();
        context.addRoundedRect(rect, kRadius);
        context.fillPath();
        context.setStrokeColor(UIColor::colorWithWhiteAlpha(1, 0.12F));
        context.setLineWidth(1);
        context.beginPath();
        context.addRoundedRect(rect.insetBy(0.5, 0.5), kRadius - 0.5);
        context.strokePath();
    }
};

}

std::shared_ptr<UIProgressHUD> UIProgressHUD::withWindow(UIView& view) {
    std::shared_ptr<UIProgressHUD> hud(new UIProgressHUD(CGRect{{}, view.bounds().size}));
    hud->host_ = view.weak_from_this();
    return hud;
}

UIProgressHUD::UIProgressHUD(CGRect frame)
    : UIView(frame)
    , panel_(std::make_shared<HUDPanel>())
    , spinner_(std::make_shared<UIActivityIndicatorView>(UIActivityIndicatorViewStyle::WhiteLarge))
    , label_(std::make_shared<UILabel>()) {
    UIView::setOpaque(false);
    setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    label_->setFont(UIFont::boldSystemFontOfSize(16));
    label_->setTextColor(UIColor::whiteColor());
    label_->setTextAlignment(UITextAlignment::Center);
    UIView::addSubview(panel_);
    panel_->addSubview(spinner_);
    panel_->addSubview(label_);
}

void UIProgressHUD::setText(std::string text) {
    label_->setText(std::move(text));
    setNeedsLayout();
}

void UIProgressHUD::show(bool shown) {
    const auto self = shared_from_this();
    const auto host = host_.lock();
    if (shown_ == shown || (shown && !host))
        return;
    shown_ = shown;
    if (shown) {
        UIViewAnimation::withoutAnimation([&] {
            setFrame({{}, host->bounds().size});
            setAlpha(0);
        });
        host->addSubview(self);
        spinner_->startAnimating();
    }
    UIViewAnimation::beginAnimations();
    UIViewAnimation::setAnimationDuration(kFadeSeconds);
    setAlpha(shown ? 1 : 0);
    UIViewAnimation::setAnimationDidStop([self](bool) {
        auto& hud = static_cast<UIProgressHUD&>(*self);
        if (hud.shown_)
            return;
        hud.spinner_->stopAnimating();
        hud.removeFromSuperview();
    });
    UIViewAnimation::commitAnimations();
}

void UIProgressHUD::layoutSubviews() {
    const double text = label_->sizeThatFits({}).width;
    const double room = std::max(0.0, bounds().size.width - 2 * kMargin);
    const double width = std::min(room, std::max(kSmallestPanel, text + 2 * kMargin));
    panel_->setFrame(CGRectMake(std::floor((bounds().size.width - width) / 2),
                                std::floor((bounds().size.height - kPanelHeight) / 2), width,
                                kPanelHeight));
    spinner_->setCenter({std::floor(width / 2) + 0.5, kSpinnerMiddle + 0.5});
    label_->setFrame(CGRectMake(8, kPanelHeight - 38, width - 16, 22));
}

}
