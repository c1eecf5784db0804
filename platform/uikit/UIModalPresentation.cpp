#include "platform/uikit/UIModalPresentation.h"

#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIScreen.h"
#include "platform/uikit/UIViewAnimation.h"
#include "platform/uikit/UIViewController.h"
#include "platform/uikit/UIWindow.h"

#include <utility>

namespace vistrel {

namespace {
constexpr double kSlideSeconds = 0.4;
}

UIModalPresentation::UIModalPresentation(UIViewController& presenter)
    : presenter_(presenter) {}

UIModalPresentation::~UIModalPresentation() {
    if (modal_)
        modal_->setPresentingViewController(nullptr);
}

void UIModalPresentation::present(const std::shared_ptr<UIViewController>& modal, bool animated) {
    transition_.finish();
    if (!modal || modal_ || modal->presentingViewController())
        return;
    modal_ = modal;
    modal->setPresentingViewController(&presenter_);
    const UIView& covered = *presenter_.view();
    presenterFrame_ = covered.frame();
    UIView* stage = covered.superview();
    if (!stage)
        stage = UIApplication::sharedApplication().keyWindow();
    stage_ = stage ? stage->weak_from_this() : std::weak_ptr<UIView>();
    begin(Way::Up, modal, animated);
}

void UIModalPresentation::dismiss(bool animated) {
    if (!modal_)
        return;
    transition_.finish();
    const auto modal = modal_;
    if (!modal)
        return;
    modal->presentation().dismiss(false);
    modal_ = nullptr;
    begin(Way::Down, modal, animated);
}

void UIModalPresentation::begin(Way way, const std::shared_ptr<UIViewController>& modal,
                                bool animated) {
    const bool goesUp = way == Way::Up;
    UIViewController& leaving = goesUp ? presenter_ : *modal;
    UIViewController& coming = goesUp ? *modal : presenter_;
    UIScreenTransition::Change change{animated, kSlideSeconds, {}, {}, {}};
    const double height = UIScreen::mainScreen().bounds().size.height;
    const auto moveBy = [modal](double distance) {
        UIView& view = *modal->view();
        view.setCenter({view.center().x, view.center().y + distance});
    };
    change.prepare = [this, modal, goesUp, animated, moveBy, height] {
        if (!goesUp)
            uncoverPresenter(*modal->view());
        else if (const auto stage = stage_.lock())
            stage->addSubview(modal->view());
        if (goesUp && animated)
            moveBy(height);
    };
    change.move = [moveBy, goesUp, height] {
        moveBy(goesUp ? -height : height);
    };
    // The presenter may be released while its modal screen slides.
    change.complete = [this, keep = presenter_.weak_from_this().lock(), modal, goesUp, animated] {
        if (goesUp)
            presented(*modal, animated);
        else
            dismissed(*modal, animated);
    };
    transition_.run(std::move(change), [&] {
        modal->view();
        if (goesUp)
            UIViewAnimation::withoutAnimation([&] { placeModal(*modal); });
        leaving.sendViewWillDisappear(animated);
        coming.sendViewWillAppear(animated);
    });
}

/// Over the application area; a rotated screen keeps its own place.
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

void UIModalPresentation::presented(UIViewController& modal, bool animated) {
    if (!stage_.expired())
        presenter_.view()->removeFromSuperview();
    modal.sendViewDidAppear(animated);
    presenter_.sendViewDidDisappear(animated);
}

void UIModalPresentation::dismissed(UIViewController& modal, bool animated) {
    modal.setPresentingViewController(nullptr);
    modal.view()->removeFromSuperview();
    presenter_.sendViewDidAppear(animated);
    modal.sendViewDidDisappear(animated);
}

}
