#include "platform/uikit/UIModalWindow.h"

#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIModalQuestion.h"

namespace vistrel {

namespace {

class Dimmer : public UIView {
public:
    Dimmer(const CGRect& frame, UIModalWindow::Dimming dimming)
        : UIView(frame)
        , dimming_(dimming) {
        setOpaque(false);
    }

    bool drawsContent() const override { return true; }

    void drawRect(const CGRect& rect) override {
        CGContext& context = *UIGraphicsGetCurrentContext();
        if (dimming_ == UIModalWindow::Dimming::Even) {
            context.setFillColor(UIColor::colorWithWhiteAlpha(0, 0.4F));
            context.fillRect(rect);
            return;
        }
        const CGGradient light{{UIColor::colorWithWhiteAlpha(0, 0.25F),
                                UIColor::colorWithWhiteAlpha(0, 0.4F),
                                UIColor::colorWithWhiteAlpha(0, 0.7F)},
                               {0, 0.55, 1}};
        context.drawRadialGradient(light, {rect.midX(), rect.midY()}, rect.size.height * 0.62);
    }

private:
    UIModalWindow::Dimming dimming_;
};

}

UIModalWindow::UIModalWindow(Dimming dimming, std::shared_ptr<UIModalQuestion> question)
    : question_(std::move(question))
    , dimmer_(std::make_shared<Dimmer>(CGRect{{}, bounds().size}, dimming))
    , stage_(std::make_shared<UIView>(CGRect{{}, bounds().size})) {
    UIView::setOpaque(false);
    stage_->setOpaque(false);
    UIView::addSubview(dimmer_);
    UIView::addSubview(stage_);
    setWindowLevel(UIWindowLevelAlert);
}

void UIModalWindow::appear(const std::shared_ptr<UIView>& responder) {
    UIApplication& application = UIApplication::sharedApplication();
    application.events().cancelTouch();
    formerResponder_ = application.events().firstResponder();
    UIWindow* formerKey = application.keyWindow();
    makeKeyAndVisible();
    if (formerKey)
        formerKey->makeKeyWindow();
    application.events().setFirstResponder(responder);
}

void UIModalWindow::resign() {
    setUserInteractionEnabled(false);
    UIEventDispatcher& events = UIApplication::sharedApplication().events();
    const auto responder = events.firstResponder();
    if (responder && responder->isDescendantOfView(*this))
        events.setFirstResponder(formerResponder_.lock());
}

void UIModalWindow::disappear() {
    const auto keep = shared_from_this();
    resign();
    removeFromSuperview();
    question_ = nullptr;
}

}
