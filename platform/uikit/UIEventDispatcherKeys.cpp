#include "platform/uikit/UIEventDispatcher.h"

#include "platform/host/Display.h"
#include "platform/host/Host.h"
#include "platform/uikit/UIAccessibilityTree.h"
#include "platform/uikit/UICommand.h"
#include "platform/uikit/UIKey.h"
#include "platform/uikit/UIScrollView.h"
#include "platform/uikit/UIView.h"
#include "platform/uikit/UIViewController.h"
#include "platform/uikit/UIWindow.h"

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

namespace vistrel {

namespace {

bool canBeSeen(const UIView& view) {
    return !view.isHidden() && view.alpha() > 0 && view.isUserInteractionEnabled();
}

/// The frontmost window that keys can reach.
std::shared_ptr<UIView> frontWindow(const UIView& root) {
    const auto& windows = root.subviews();
    for (auto view = windows.rbegin(); view != windows.rend(); ++view)
        if (canBeSeen(**view) && dynamic_cast<UIWindow*>(view->get()) != nullptr)
            return *view;
    return nullptr;
}

bool offer(UIView& view, const UIKey& key) {
    if (view.keyPressed(key))
        return true;
    auto* controller = view.viewController();
    if (key.code != UIKeyCode::Escape || controller == nullptr)
        return false;
    const auto kept = controller->weak_from_this().lock();
    return controller->escapePressed();
}

using Question = std::function<bool(UIView&)>;

/// Whether a view agreed, and whether a screen was reached, behind which nothing is asked.
struct Outcome {
    bool used = false;
    bool metScreen = false;
};

Outcome askInside(const std::shared_ptr<UIView>& view, const Question& question) {
    if (!canBeSeen(*view))
        return {};
    Outcome outcome;
    const auto children = view->subviews();
    for (auto child = children.rbegin(); child != children.rend() && !outcome.metScreen; ++child) {
        outcome = askInside(*child, question);
        if (outcome.used)
            return outcome;
    }
    outcome.metScreen = outcome.metScreen || view->viewController() != nullptr;
    outcome.used = question(*view);
    return outcome;
}

bool isArrow(const UIKey& key) {
    return key.code == UIKeyCode::Up || key.code == UIKeyCode::Down ||
           key.code == UIKeyCode::Left || key.code == UIKeyCode::Right;
}

bool goesBackward(const UIKey& key) {
    return key.shift || key.code == UIKeyCode::Up || key.code == UIKeyCode::Left;
}

void scrollIntoSight(const UIView& view) {
    for (UIView* above = view.superview(); above; above = above->superview())
        if (auto* scroll = dynamic_cast<UIScrollView*>(above))
            scroll->scrollRectToVisible(view.convertRectToView(view.bounds(), scroll), true);
}

}

bool UIEventDispatcher::sendKey(const UIKey& key) {
    if (isIgnoringInteraction())
        return true;
    if (const auto command = commandForKey(key))
        return sendCommand(*command);
    const auto window = frontWindow(root_);
    if (!window)
        return false;
    const bool hadFocus = reachableResponder() && showsFocus_;
    if (offerToFocused(key))
        return true;
    if ((key.code == UIKeyCode::Tab || (hadFocus && isArrow(key))) && moveFocus(goesBackward(key)))
        return true;
    return offerToUnfocused(*window, key) || window->keyPressed(key) ||
           (isArrow(key) && moveFocus(goesBackward(key)));
}

bool UIEventDispatcher::sendCommand(UICommand command) {
    if (isIgnoringInteraction())
        return true;
    const auto performs = [command](UIView& view) {
        auto* controller = view.viewController();
        const auto kept = controller ? controller->weak_from_this().lock() : nullptr;
        return controller && controller->performCommand(command);
    };
    if (const auto window = frontWindow(root_); window && askInside(window, performs).used)
        return true;
    switch (command) {
    case UICommand::Back:
        return sendKey({.code = UIKeyCode::Escape, .text = {}});
    case UICommand::Quit:
    case UICommand::Close:
        host::current().display->close();
        return true;
    case UICommand::FullScreen:
        host::current().display->toggleFullScreen();
        return true;
    default:
        return false;
    }
}

std::shared_ptr<UIView> UIEventDispatcher::reachableResponder() const {
    const auto window = frontWindow(root_);
    auto focused = firstResponder_.lock();
    const bool isReachable =
        focused && window && focused->isDescendantOfView(*window) && focused->isOnScreen();
    return isReachable ? focused : nullptr;
}

bool UIEventDispatcher::offerToFocused(const UIKey& key) {
    auto focused = reachableResponder();
    while (focused) {
        if (offer(*focused, key))
            return true;
        auto* above = focused->superview();
        focused = above != nullptr && above != &root_ ? above->shared_from_this() : nullptr;
    }
    return false;
}

bool UIEventDispatcher::offerToUnfocused(UIView& window, const UIKey& key) {
    return askInside(
               window.shared_from_this(),
               [this, &key](UIView& view) {
                   const auto kept = view.shared_from_this();
                   if (!view.takesUnfocusedKeys() || !offer(view, key))
                       return false;
                   // A list whose rows the arrows move over has the focus from now on.
                   if (isArrow(key) && view.canBecomeFirstResponder()) {
                       showFocus(true);
                       setFirstResponder(kept);
                   }
                   return true;
               })
        .used;
}

bool UIEventDispatcher::moveFocus(bool backward) {
    const auto window = frontWindow(root_);
    const auto views = window ? focusOrder(*window) : std::vector<std::shared_ptr<UIView>>{};
    if (views.empty())
        return false;
    const auto count = views.size();
    const auto now = std::find(views.begin(), views.end(), firstResponder_.lock());
    std::size_t next = backward ? count - 1 : 0;
    if (now != views.end()) {
        const auto index = static_cast<std::size_t>(now - views.begin());
        next = (index + (backward ? count - 1 : 1)) % count;
    }
    showFocus(true);
    setFirstResponder(views[next]);
    scrollIntoSight(*views[next]);
    return true;
}

void UIEventDispatcher::showFocus(bool shows) {
    if (std::exchange(showsFocus_, shows) != shows)
        root_.setNeedsComposition();
}

std::shared_ptr<UIView> UIEventDispatcher::focusedPart() const {
    const auto focused = reachableResponder();
    return focused ? focused->focusedPart() : nullptr;
}

}
