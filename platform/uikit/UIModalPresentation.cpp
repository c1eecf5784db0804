#include "platform/uikit/UIModalPresentation.h"

#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIScreen.h"
#include "platform/uikit/UIViewAnimation.h"
#include "platform/uikit/UIViewController.h"
#include "platform/uikit/UIWindow.h"

#include <utility>
#include <vector>

namespace vistrel {

namespace {
constexpr double kSlideSeconds = 0.4;
}

struct UIModalPresentation::Slide {
    Way way;
    std::shared_ptr<UIViewController> modal;
    bool animated;
    std::vector<std::shared_ptr<UIView>> deaf; ///< views that take no touches while it lasts
};

UIModalPresentation::UIModalPresentation(UIViewController& presenter)
    : presenter_(presenter) {}

UIModalPresentation::~UIModalPresentation() = default;

void UIModalPresentation::present(std::shared_ptr<UIViewController> modal, bool animated) {
    finish();
    if (!modal || presenter_.modal_ || modal->presenter_)
        return;
    presenter_.modal_ = modal;
    modal->presenter_ = &presenter_;
    const UIView& covered = *presenter_.view();
    presenterFrame_ = covered.frame();
    UIView* stage = covered.superview();
    if (!stage)
        stage = UIApplication::sharedApplication().keyWindow();
    stage_ = stage ? stage->weak_from_this() : std::weak_ptr<UIView>();
    begin(Way::Up, std::move(modal), animated);
}

void UIModalPresentation::dismiss(bool animated) {
    if (!presenter_.modal_)
        return;
    finish();
    const auto modal = presenter_.modal_;
    if (!modal)
        return;
    if (modal->modal_)
        modal->presentation().dismiss(false);
    presenter_.modal_ = nullptr;
    begin(Way::Down, modal, animated);
}

void UIModalPresentation::begin(Way way, std::shared_ptr<UIViewController> modal, bool animated) {
    UIViewController& leaving = way == Way::Up ? presenter_ : *modal;
    UIViewController& coming = way == Way::Up ? *modal : presenter_;
    UIView& view = *modal->view();
    slide_ = std::make_unique<Slide>(Slide{way, modal, animated, {}});
    const unsigned serial = ++serial_;
    UIViewAnimation::withoutAnimation([&] {
        if (way == Way::Up)
            placeModal(*modal);
    });
    leaving.sendViewWillDisappear(animated);
    coming.sendViewWillAppear(animated);
    if (serial != serial_ || !slide_)
        return; // the screens' own calls went on to something else
    UIViewAnimation::withoutAnimation([&] {
        if (way == Way::Down)
            uncoverPresenter(view);
        else if (const auto stage = stage_.lock())
            stage->addSubview(modal->view());
    });
    if (animated)
        move(modal->view(), way);
    else
        finish();
}

/// Over the application area; a screen that has turned itself keeps its own place.
void UIModalPresentation::placeModal(UIViewController& modal) {
    if (modal.view()->transform().isIdentity())
        modal.view()->setFrame(UIScreen::mainScreen().applicationFrame());
}

void UIModalPresentation::uncoverPresenter(const UIView& modalView) {
    const auto& view = presenter_.view();
    const auto stage = stage_.lock();
    if (!stage || view->superview())
        return;
    view->setFrame(presenterFrame_);
    if (modalView.superview() == stage.get())
        stage->insertSubviewBelowSubview(view, modalView);
    else
        stage->addSubview(view);
}

/// A second tap must not set off again what the first one did.
void UIModalPresentation::ignoreTouches(const std::shared_ptr<UIView>& view) {
    if (!view->isUserInteractionEnabled())
        return;
    view->setUserInteractionEnabled(false);
    slide_->deaf.push_back(view);
}

void UIModalPresentation::move(const std::shared_ptr<UIView>& modalView, Way way) {
    UIView& view = *modalView;
    ignoreTouches(modalView);
    ignoreTouches(presenter_.view());
    const double height = UIScreen::mainScreen().bounds().size.height;
    const CGPoint shown = view.center();
    const CGPoint below{shown.x, shown.y + height};
    if (way == Way::Up)
        UIViewAnimation::withoutAnimation([&] { view.setCenter(below); });
    UIViewAnimation::beginAnimations();
    UIViewAnimation::setAnimationDuration(kSlideSeconds);
    view.setCenter(way == Way::Up ? shown : below);
    const auto weak = weak_from_this();
    UIViewAnimation::setAnimationDidStop([weak, serial = serial_](bool) {
        const auto self = weak.lock();
        if (self && self->serial_ == serial)
            self->finish();
    });
    UIViewAnimation::commitAnimations();
}

void UIModalPresentation::finish() {
    const auto slide = std::move(slide_);
    if (!slide)
        return;
    const auto keep = presenter_.weak_from_this().lock();
    for (const auto& view : slide->deaf)
        view->setUserInteractionEnabled(true);
    if (slide->way == Way::Up)
        presented(*slide);
    else
        dismissed(*slide);
}

void UIModalPresentation::presented(const Slide& slide) {
    if (!stage_.expired())
        presenter_.view()->removeFromSuperview();
    slide.modal->sendViewDidAppear(slide.animated);
    presenter_.sendViewDidDisappear(slide.animated);
}

void UIModalPresentation::dismissed(const Slide& slide) {
    slide.modal->presenter_ = nullptr;
    slide.modal->view()->removeFromSuperview();
    presenter_.sendViewDidAppear(slide.animated);
    slide.modal->sendViewDidDisappear(slide.animated);
}

}
