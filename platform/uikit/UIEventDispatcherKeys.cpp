#include "platform/uikit/UIEventDispatcher.h"

#include "platform/uikit/UIKey.h"
#include "platform/uikit/UIView.h"
#include "platform/uikit/UIViewController.h"
#include "platform/uikit/UIWindow.h"

#include <algorithm>
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
    for (auto view = windows.rbegin(); view != windows.rend(); ++view) {
        if (canBeSeen(**view) && dynamic_cast<UIWindow*>(view->get()) != nullptr) {
            return *view;
        }
    }
    return nullptr;
}

bool offer(UIView& view, const UIKey& key) {
    if (view.keyPressed(key)) {
        return true;
    }
    auto* controller = view.viewController();
    if (key.code != UIKeyCode::Escape || controller == nullptr) {
        return false;
    }
    const auto kept = controller->weak_from_this().lock();
    return controller->escapePressed();
}

/// Whether the key was used, and whether a screen was reached, behind which nothing is asked.
struct Outcome {
    bool used = false;
    bool metScreen = false;
};

Outcome offerInside(const std::shared_ptr<UIView>& view, const UIKey& key) {
    if (!canBeSeen(*view)) {
        return {};
    }
    Outcome outcome;
    const auto children = view->subviews();
    for (auto child = children.rbegin(); child != children.rend() && !outcome.metScreen; ++child) {
        outcome = offerInside(*child, key);
        if (outcome.used) {
            return outcome;
        }
    }
    outcome.metScreen = outcome.metScreen || view->viewController() != nullptr;
    outcome.used = view->takesUnfocusedKeys() && offer(*view, key);
    return outcome;
}

void collectFocusable(const std::shared_ptr<UIView>& view,
                      std::vector<std::shared_ptr<UIView>>& found) {
    if (!canBeSeen(*view)) {
        return;
    }
    if (view->canBecomeFirstResponder()) {
        found.push_back(view);
    }
    for (const auto& child : view->subviews()) {
        collectFocusable(child, found);
    }
}

}

bool UIEventDispatcher::sendKey(const UIKey& key) {
    if (isIgnoringInteraction()) {
        return true;
    }
    const auto window = frontWindow(root_);
    if (!window) {
        return false;
    }
    auto focused = firstResponder_.lock();
    if (focused && !(focused->isDescendantOfView(*window) && focused->isOnScreen())) {
        focused = nullptr;
    }
    while (focused) {
        if (offer(*focused, key)) {
            return true;
        }
        auto* above = focused->superview();
        focused = above != nullptr && above != &root_ ? above->shared_from_this() : nullptr;
    }
    if (key.code == UIKeyCode::Tab) {
        return moveFocus(*window, key.shift);
    }
    return offerInside(window, key).used || window->keyPressed(key);
}

bool UIEventDispatcher::moveFocus(UIView& window, bool backward) {
    std::vector<std::shared_ptr<UIView>> views;
    collectFocusable(window.shared_from_this(), views);
    if (views.empty()) {
        return false;
    }
    const auto count = views.size();
    const auto now = std::find(views.begin(), views.end(), firstResponder_.lock());
    std::size_t next = backward ? count - 1 : 0;
    if (now != views.end()) {
        const auto index = static_cast<std::size_t>(now - views.begin());
        next = (index + (backward ? count - 1 : 1)) % count;
    }
    setFirstResponder(views[next]);
    return true;
}

}
