#include "platform/uikit/UIScreenTransition.h"

#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIViewAnimation.h"

#include <cassert>
#include <utility>

namespace vistrel {

struct UIScreenTransition::Running {
    UIScreenTransition& owner;
    Change change;
    std::shared_ptr<const void> pause;
};

UIScreenTransition::UIScreenTransition() = default;

UIScreenTransition::~UIScreenTransition() = default;

void UIScreenTransition::run(Change change, const std::function<void()>& announce) {
    assert(!running_ && "the former change was not finished");
    const auto running = std::make_shared<Running>(Running{*this, std::move(change), nullptr});
    running_ = running;
    announce();
    if (running_ != running)
        return;
    UIViewAnimation::withoutAnimation(running->change.prepare);
    if (!running->change.animated) {
        finish();
        return;
    }
    running->pause = UIApplication::sharedApplication().events().ignoreInteraction();
    UIViewAnimation::beginAnimations();
    UIViewAnimation::setAnimationDuration(running->change.seconds);
    running->change.move();
    // Only the transition holds the running change; one that was finished early is gone.
    UIViewAnimation::setAnimationDidStop([weak = std::weak_ptr(running)](bool) {
        if (const auto stopped = weak.lock())
            stopped->owner.finish();
    });
    UIViewAnimation::commitAnimations();
}

void UIScreenTransition::finish() {
    const auto finished = std::exchange(running_, nullptr);
    if (!finished)
        return;
    finished->pause.reset();
    finished->change.complete();
}

}
