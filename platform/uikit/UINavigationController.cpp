#include "platform/uikit/UINavigationController.h"

#include "platform/foundation/Weakly.h"
#include "platform/uikit/UINavigationBar.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UIViewAnimation.h"

#include <algorithm>
#include <utility>

namespace vistrel {

namespace {

constexpr double kSlideSeconds = 0.35;

}

UINavigationController::UINavigationController() = default;

std::shared_ptr<UINavigationController>
UINavigationController::withRootViewController(std::shared_ptr<UIViewController> root) {
    std::shared_ptr<UINavigationController> controller(new UINavigationController);
    controller->bar_ = std::make_shared<UINavigationBar>();
    controller->bar_->setBackAction(weakly(controller.get(), [](UINavigationController& self) {
        self.popViewControllerAnimated(true);
    }));
    if (root)
        controller->pushViewController(std::move(root), false);
    return controller;
}

UINavigationController::~UINavigationController() {
    // The bar may outlive this in a view that somebody else holds, and its items hold the screens.
    bar_->setItems({}, false);
    for (const auto& controller : stack_)
        controller->setNavigationController(nullptr);
}

std::shared_ptr<UIViewController> UINavigationController::topViewController() const {
    return stack_.empty() ? nullptr : stack_.back();
}

const std::shared_ptr<UINavigationBar>& UINavigationController::navigationBar() {
    return bar_;
}

void UINavigationController::loadView() {
    UIViewController::loadView();
    const auto& root = view();
    content_ = std::make_shared<UIView>(root->bounds());
    content_->setOpaque(false);
    content_->setClipsToBounds(true);
    content_->setAutoresizingMask(UIViewAutoresizingFlexibleWidth |
                                  UIViewAutoresizingFlexibleHeight);
    bar_->setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
    root->addSubview(content_);
    root->addSubview(bar_);
    layoutBars();
}

void UINavigationController::viewDidLoad() {
    installTopView();
}

void UINavigationController::didReceiveMemoryWarning() {
    // The bar and the container views are small and stay; the screens get the warning themselves.
}

void UINavigationController::layoutBars() {
    const CGRect area = view()->bounds();
    bar_->setFrame(CGRectMake(0, 0, area.size.width, kUIBarHeight));
    content_->setFrame(
        CGRectMake(0, kUIBarHeight, area.size.width, area.size.height - kUIBarHeight));
}

std::vector<std::shared_ptr<UINavigationItem>> UINavigationController::barItems() const {
    std::vector<std::shared_ptr<UINavigationItem>> items;
    for (const auto& controller : stack_)
        items.emplace_back(controller, &controller->navigationItem());
    return items;
}

void UINavigationController::pushViewController(std::shared_ptr<UIViewController> controller,
                                                bool animated) {
    if (!controller || std::find(stack_.begin(), stack_.end(), controller) != stack_.end())
        return;
    transition_.finish();
    const auto old = topViewController();
    controller->setNavigationController(this);
    stack_.push_back(std::move(controller));
    showTopScreen(Way::Push, old, animated);
}

std::shared_ptr<UIViewController> UINavigationController::popViewControllerAnimated(bool animated) {
    if (stack_.size() < 2)
        return nullptr;
    auto popped = stack_.back();
    popTo(stack_.size() - 1, animated);
    return popped;
}

void UINavigationController::popToViewControllerAnimated(const UIViewController& controller,
                                                         bool animated) {
    const auto found = std::find_if(stack_.begin(), stack_.end(), [&](const auto& screen) {
        return screen.get() == &controller;
    });
    const auto count = static_cast<std::size_t>(found - stack_.begin()) + 1;
    if (count < stack_.size())
        popTo(count, animated);
}

void UINavigationController::popToRootViewControllerAnimated(bool animated) {
    if (stack_.size() > 1)
        popTo(1, animated);
}

void UINavigationController::popTo(std::size_t count, bool animated) {
    transition_.finish();
    const auto first = stack_.begin() + static_cast<std::ptrdiff_t>(count);
    const std::vector<std::shared_ptr<UIViewController>> leaving(first, stack_.end());
    stack_.erase(first, stack_.end());
    const auto self = shared_from_this();
    showTopScreen(Way::Pop, leaving.back(), animated);
    // They have left although one still slides out: no late answer to them may push onto this
    // stack.
    for (const auto& controller : leaving)
        if (std::find(stack_.begin(), stack_.end(), controller) == stack_.end())
            controller->setNavigationController(nullptr);
}

void UINavigationController::showTopScreen(Way way, const std::shared_ptr<UIViewController>& old,
                                           bool animated) {
    const auto self = shared_from_this();
    const auto shown = topViewController();
    const bool slides = animated && old && isViewLoaded();
    if (isViewLoaded())
        shown->view();
    if (topViewController() != shown)
        return; // loading the view has moved on to another screen
    const double travel = way == Way::Push ? 1 : -1;
    UIScreenTransition::Change change{slides, kSlideSeconds, {}, {}, {}};
    change.prepare = [this, shown, slides, travel] {
        if (slides)
            startSlide(*shown, travel);
    };
    change.move = [this, old, shown, travel] {
        const CGRect place = content_->bounds();
        shown->view()->setFrame(place);
        UIView& oldView = *old->view();
        oldView.setFrame(oldView.frame().offsetBy(-travel * place.size.width, 0));
    };
    change.complete = [this, old, shown, slides] {
        completeChange(old, *shown, slides);
    };
    transition_.run(std::move(change), [&] {
        announceChange(old, *shown, slides);
        bar_->setItems(barItems(), slides);
    });
}

void UINavigationController::announceChange(const std::shared_ptr<UIViewController>& old,
                                            UIViewController& shown, bool animated) {
    if (!isViewLoaded())
        return;
    UIViewAnimation::withoutAnimation([&] { shown.view()->setFrame(content_->bounds()); });
    if (old)
        old->sendViewWillDisappear(animated);
    if (isAppearingOrAppeared())
        shown.sendViewWillAppear(animated);
}

void UINavigationController::startSlide(UIViewController& shown, double travel) {
    const CGRect place = content_->bounds();
    shown.view()->setFrame(place.offsetBy(travel * place.size.width, 0));
    content_->addSubview(shown.view());
}

void UINavigationController::completeChange(const std::shared_ptr<UIViewController>& old,
                                            UIViewController& shown, bool animated) {
    const auto self = weak_from_this().lock();
    if (isViewLoaded())
        installTopView();
    if (old)
        old->sendViewDidDisappear(animated);
    if (appearance() == Appearance::Appeared)
        shown.sendViewDidAppear(animated);
}

void UINavigationController::installTopView() {
    const auto top = topViewController();
    if (!top)
        return;
    const auto view = top->view();
    UIViewAnimation::withoutAnimation([&] {
        const auto shown = content_->subviews();
        for (const auto& other : shown)
            if (other != view)
                other->removeFromSuperview();
        view->setFrame(content_->bounds());
        if (view->superview() != content_.get())
            content_->addSubview(view);
    });
}

bool UINavigationController::escapePressed() {
    if (stack_.size() > 1) {
        popViewControllerAnimated(true);
        return true;
    }
    return UIViewController::escapePressed();
}

void UINavigationController::sendViewWillAppear(bool animated) {
    transition_.finish();
    if (isViewLoaded())
        installTopView();
    UIViewController::sendViewWillAppear(animated);
    if (const auto top = topViewController())
        top->sendViewWillAppear(animated);
}

void UINavigationController::sendViewDidAppear(bool animated) {
    UIViewController::sendViewDidAppear(animated);
    if (const auto top = topViewController())
        top->sendViewDidAppear(animated);
}

void UINavigationController::sendViewWillDisappear(bool animated) {
    transition_.finish();
    UIViewController::sendViewWillDisappear(animated);
    if (const auto top = topViewController())
        top->sendViewWillDisappear(animated);
}

void UINavigationController::sendViewDidDisappear(bool animated) {
    UIViewController::sendViewDidDisappear(animated);
    if (const auto top = topViewController())
        top->sendViewDidDisappear(animated);
}

}
