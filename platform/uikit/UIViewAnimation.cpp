#include "platform/uikit/UIViewAnimation.h"

#include "platform/uikit/UIViewAnimationEngine.h"

#include <utility>

namespace vistrel::UIViewAnimation {

namespace {

UIViewAnimationEngine& engine() {
    return UIViewAnimationEngine::shared();
}

}

void beginAnimations() {
    engine().begin();
}

void setAnimationDuration(double seconds) {
    if (auto* block = engine().openBlock())
        block->duration = seconds;
}

void setAnimationCurve(UIViewAnimationCurve curve) {
    if (auto* block = engine().openBlock())
        block->curve = curve;
}

void setAnimationTransitionForView(UIViewAnimationTransition transition, UIView& view,
                                   bool /*cache*/) {
    engine().addTransition(transition, view);
}

void setAnimationDidStop(std::function<void(bool finished)> didStop) {
    if (auto* block = engine().openBlock())
        block->didStop = std::move(didStop);
}

void commitAnimations() {
    engine().commit();
}

void withoutAnimation(const std::function<void()>& changes) {
    engine().disable();
    changes();
    engine().enable();
}

}
