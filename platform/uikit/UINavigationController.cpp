#include "platform/uikit/UINavigationController.h"

#include "platform/foundation/Weakly.h"
#include "platform/uikit/UINavigationBar.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UIViewAnimation.h"

#include <algorithm>
#include <utility>

namespace vistrel {

namespace {

constexpr double kBarHeight = 44;
constexpr double kSlideSeconds = 0.35;
constexpr double kBarSeconds = 0.25;

}

struct UINavigationController::Transition {
    std::shared_ptr<UIViewController> old;
    std::shared_ptr<UIViewController> shown;
    std::vector<std::shared_ptr<UIViewController>> leaving;
    bool animated;
};

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
    for (const auto& controller : stack_)
        controller->navigationController_ = nullptr;
    if (!transition_)
        return;
    for (const auto& controller : transition_->leaving)
        controller->navigationController_ = nullptr;
}

std::shared_ptr<UIViewController> UINavigationController::topViewController() const {
    return stack_.empty() ? nullptr : stack_.back();
}

std::shared_ptr<UIViewController> UINavigationController::visibleViewController() const {
    const auto modal = modalViewController();
    return modal ? modal : topViewController();
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
    // The bar and the screens' places are small and stay; the screens hear the warning themselves.
}

void UINavigationController::layoutBars() {
    const CGRect area = view()->bounds();
    const double top = barHidden_ ? 0 : kBarHeight;
    bar_->setFrame(CGRectMake(0, barHidden_ ? -kBarHeight : 0, area.size.width, kBarHeight));
    content_->setFrame(CGRectMake(0, top, area.size.width, area.size.height - top));
}

void UINavigationController::setNavigationBarHidden(bool hidden, bool animated) {
    if (barHidden_ == hidden)
        return;
    barHidden_ = hidden;
    if (!isViewLoaded())
        return;
    if (animated) {
        UIViewAnimation::beginAnimations();
        UIViewAnimation::setAnimationDuration(kBarSeconds);
    }
    layoutBars();
    if (animated)
        UIViewAnimation::commitAnimations();
}

void UINavigationController::adopt(UIViewController& controller) {
    controller.navigationController_ = this;
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
    finish();
    const auto old = topViewController();
    adopt(*controller);
    stack_.push_back(std::move(controller));
    begin(Way::Push, old, {}, animated);
}

std::shared_ptr<UIViewController> UINavigationController::popViewControllerAnimated(bool animated) {
    if (stack_.size() < 2)
        return nullptr;
    auto popped = stack_.back();
    popTo(stack_.size() - 1, animated);
    return popped;
}

void UINavigationController::popToRootViewControllerAnimated(bool animated) {
    if (stack_.size() > 1)
        popTo(1, animated);
}

void UINavigationController::popTo(std::size_t count, bool animated) {
    finish();
    const auto first = stack_.begin() + static_cast<std::ptrdiff_t>(count);
    std::vector<std::shared_ptr<UIViewController>> leaving(first, stack_.end());
    stack_.erase(first, stack_.end());
    const auto old = leaving.back();
    begin(Way::Pop, old, std::move(leaving), animated);
}

void UINavigationController::begin(Way way, const std::shared_ptr<UIViewController>& old,
                                   std::vector<std::shared_ptr<UIViewController>> leaving,
                                   bool animated) {
    const auto self = shared_from_this();
    const auto shown = topViewController();
    const bool slides = animated && old && isViewLoaded();
    transition_ = std::make_unique<Transition>(Transition{old, shown, std::move(leaving), slides});
    const unsigned serial = ++serial_;
    const auto isCurrent = [&] {
        return transition_ && serial == serial_;
    };
    if (isViewLoaded()) {
        shown->view();
        if (!isCurrent())
            return;
        UIViewAnimation::withoutAnimation([&] { shown->view()->setFrame(content_->bounds()); });
        if (old)
            old->sendViewWillDisappear(slides);
        if (isAppearingOrAppeared())
            shown->sendViewWillAppear(slides);
        if (!isCurrent())
            return;
    }
    bar_->setItems(barItems(), slides);
    if (slides)
        slide(way);
    else
        finish();
}

void UINavigationController::slide(Way way) {
    const double width = content_->bounds().size.width;
    const double from = way == Way::Push ? width : -width;
    UIView& oldView = *transition_->old->view();
    const auto shownView = transition_->shown->view();
    const CGRect place = content_->bounds();
    setTakesTouches(false);
    UIViewAnimation::withoutAnimation([&] {
        shownView->setFrame(place.offsetBy(from, 0));
        content_->addSubview(shownView);
    });
    UIViewAnimation::beginAnimations();
    UIViewAnimation::setAnimationDuration(kSlideSeconds);
    shownView->setFrame(place);
    oldView.setFrame(oldView.frame().offsetBy(-from, 0));
    const auto weak = weak_from_this();
    UIViewAnimation::setAnimationDidStop([weak, serial = serial_](bool) {
        const auto self = weak.lock();
        if (!self)
            return;
        auto& navigation = static_cast<UINavigationController&>(*self);
        if (navigation.serial_ == serial)
            navigation.finish();
    });
    UIViewAnimation::commitAnimations();
}

/// A second tap must not set off again what the first one did.
void UINavigationController::setTakesTouches(bool takes) {
    content_->setUserInteractionEnabled(takes);
    bar_->setUserInteractionEnabled(takes);
}

void UINavigationController::finish() {
    const auto transition = std::move(transition_);
    if (!transition)
        return;
    const auto self = weak_from_this().lock();
    if (isViewLoaded()) {
        installTopView();
        setTakesTouches(true);
    }
    for (const auto& controller : transition->leaving)
        controller->navigationController_ = nullptr;
    if (transition->old)
        transition->old->sendViewDidDisappear(transition->animated);
    if (appearance() == Appearance::Appeared)
        transition->shown->sendViewDidAppear(transition->animated);
}

void UINavigationController::installTopView() {
    const auto top = topViewController();
    if (!top)
        return;
    const auto view = top->view();
    UIViewAnimation::withoutAnimation([&] {
        const auto shown = content_->subviews();
        for (const auto& other : shown) {
            if (other != view)
                other->removeFromSuperview();
        }
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
    finish();
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
    finish();
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
