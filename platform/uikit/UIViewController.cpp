#include "platform/uikit/UIViewController.h"

#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSNotificationCenter.h"
#include "platform/foundation/Weakly.h"
#include "platform/uikit/UIBarButtonItem.h"
#include "platform/uikit/UIModalPresentation.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UIScreen.h"

#include <utility>

namespace vistrel {

UIViewController::UIViewController() {
    NSNotificationCenter::defaultCenter().addObserver(
        this, UIApplicationDidReceiveMemoryWarningNotification, nullptr,
        [this](const NSNotification&) {
            const auto self = weak_from_this().lock();
            didReceiveMemoryWarning();
        });
}

UIViewController::~UIViewController() {
    NSNotificationCenter::defaultCenter().removeObserver(this);
    if (view_)
        view_->setViewController(nullptr);
}

const std::shared_ptr<UIView>& UIViewController::view() {
    if (!view_) {
        loadView();
        viewDidLoad();
    }
    return view_;
}

void UIViewController::setView(std::shared_ptr<UIView> view) {
    if (view_)
        view_->setViewController(nullptr);
    view_ = std::move(view);
    if (view_)
        view_->setViewController(this);
}

void UIViewController::loadView() {
    auto view = std::make_shared<UIView>(UIScreen::mainScreen().applicationFrame());
    view->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    view->setOpaque(false);
    setView(std::move(view));
}

void UIViewController::didReceiveMemoryWarning() {
    const bool isOnScreen = appearance_ != Appearance::Disappeared;
    if (view_ && !isOnScreen && view_->window() == nullptr)
        releaseView();
}

void UIViewController::releaseView() {
    view_->removeFromSuperview();
    setView(nullptr);
    viewDidUnload();
}

bool UIViewController::shouldAutorotateToInterfaceOrientation(UIInterfaceOrientation orientation) {
    return orientation == UIInterfaceOrientation::Portrait;
}

void UIViewController::setEditing(bool editing, bool /*animated*/) {
    editing_ = editing;
    if (!editButtonItem_)
        return;
    editButtonItem_->setTitle(NSLocalizedString(editing ? "Done" : "Edit"));
    editButtonItem_->setStyle(editing ? UIBarButtonItemStyle::Done
                                      : UIBarButtonItemStyle::Bordered);
}

std::shared_ptr<UIBarButtonItem> UIViewController::editButtonItem() {
    if (editButtonItem_)
        return editButtonItem_;
    editButtonItem_ = UIBarButtonItem::withTitle(
        {}, UIBarButtonItemStyle::Bordered,
        weakly(this, [](UIViewController& self) { self.setEditing(!self.isEditing(), true); }));
    UIViewController::setEditing(editing_, false);
    return editButtonItem_;
}

bool UIViewController::escapePressed() {
    if (navigationController_)
        return navigationController_->escapePressed();
    if (!presenter_)
        return false;
    dismissModalViewControllerAnimated(true);
    return true;
}

void UIViewController::setTitle(std::string title) {
    title_ = std::move(title);
    navigationItem().setTitle(title_);
}

UINavigationItem& UIViewController::navigationItem() {
    if (!navigationItem_)
        navigationItem_ = std::make_unique<UINavigationItem>(title_);
    return *navigationItem_;
}

UIViewController* UIViewController::parentViewController() const {
    return navigationController_ ? navigationController_ : presenter_;
}

UIViewController& UIViewController::outermostContainer() {
    UIViewController* container = this;
    while (container->navigationController_)
        container = container->navigationController_;
    return *container;
}

const UIViewController& UIViewController::outermostContainer() const {
    return const_cast<UIViewController&>(*this).outermostContainer();
}

UIModalPresentation& UIViewController::presentation() {
    if (!presentation_)
        presentation_ = std::make_unique<UIModalPresentation>(*this);
    return *presentation_;
}

std::shared_ptr<UIViewController> UIViewController::modalViewController() const {
    const auto& presentation = outermostContainer().presentation_;
    return presentation ? presentation->modal() : nullptr;
}

void UIViewController::presentModalViewController(
    const std::shared_ptr<UIViewController>& controller, bool animated) {
    const auto self = outermostContainer().weak_from_this().lock();
    outermostContainer().presentation().present(controller, animated);
}

void UIViewController::dismissModalViewControllerAnimated(bool animated) {
    UIViewController& container = outermostContainer();
    UIViewController* presenter = modalViewController() ? &container : container.presenter_;
    if (!presenter)
        return;
    const auto self = presenter->weak_from_this().lock();
    presenter->presentation().dismiss(animated);
}

void UIViewController::sendViewWillAppear(bool animated) {
    if (isAppearingOrAppeared())
        return;
    appearance_ = Appearance::Appearing;
    viewWillAppear(animated);
}

void UIViewController::sendViewDidAppear(bool animated) {
    if (appearance_ != Appearance::Appearing)
        return;
    appearance_ = Appearance::Appeared;
    viewDidAppear(animated);
}

void UIViewController::sendViewWillDisappear(bool animated) {
    if (!isAppearingOrAppeared())
        return;
    appearance_ = Appearance::Disappearing;
    viewWillDisappear(animated);
}

void UIViewController::sendViewDidDisappear(bool animated) {
    if (appearance_ != Appearance::Disappearing)
        return;
    appearance_ = Appearance::Disappeared;
    viewDidDisappear(animated);
}

void UIViewController::viewMovedToWindow(UIWindow* window) {
    if (navigationController_ || presenter_ || (presentation_ && presentation_->isMoving()))
        return;
    const auto self = weak_from_this().lock();
    if (window && appearance_ == Appearance::Disappeared) {
        sendViewWillAppear(false);
        sendViewDidAppear(false);
    } else if (!window && appearance_ == Appearance::Appeared) {
        sendViewWillDisappear(false);
        sendViewDidDisappear(false);
    }
}

}
