#include "platform/uikit/UINavigationBarChange.h"

#include "platform/uikit/UIView.h"
#include "platform/uikit/UIViewAnimation.h"

namespace vistrel {

namespace {

void moveAcross(UIView& view, double distance) {
    view.setCenter({view.center().x + distance, view.center().y});
}

}

void UINavigationBarChange::apply() const {
    for (const auto& [view, distance] : leaving_)
        view->removeFromSuperview();
}

void UINavigationBarChange::animate(double seconds, std::function<void(UIView&)> left) const {
    UIViewAnimation::withoutAnimation([this] {
        for (const auto& [view, distance] : entering_) {
            view->setAlpha(0);
            moveAcross(*view, distance);
        }
    });
    UIViewAnimation::beginAnimations();
    UIViewAnimation::setAnimationDuration(seconds);
    for (const auto& [view, distance] : entering_) {
        view->setAlpha(1);
        moveAcross(*view, -distance);
    }
    for (const auto& [view, distance] : leaving_) {
        view->setUserInteractionEnabled(false);
        view->setAlpha(0);
        moveAcross(*view, -distance);
    }
    UIViewAnimation::setAnimationDidStop([leaving = leaving_, left = std::move(left)](bool) {
        for (const auto& [view, distance] : leaving)
            left(*view);
    });
    UIViewAnimation::commitAnimations();
}

}
