#include "platform/uikit/UIModalQuestion.h"

#include "platform/foundation/Weakly.h"
#include "platform/uikit/UIApplication.h"

#include <utility>

namespace vistrel {

UIModalQuestion::UIModalQuestion(std::vector<std::string> buttons)
    : buttons_(std::move(buttons)) {}

UIModalQuestion::~UIModalQuestion() = default;

std::vector<std::shared_ptr<UIModalQuestion>> UIModalQuestion::allVisible() {
    std::vector<std::shared_ptr<UIModalQuestion>> questions;
    for (const auto& view : UIApplication::sharedApplication().screenView().subviews()) {
        const auto* window = dynamic_cast<const UIModalWindow*>(view.get());
        if (window && window->question() && window->question()->isVisible())
            questions.push_back(window->question());
    }
    return questions;
}

std::shared_ptr<UIModalWindow> UIModalQuestion::openWindow(UIModalWindow::Dimming dimming) {
    visible_ = true;
    auto window = std::make_shared<UIModalWindow>(dimming, shared_from_this());
    window_ = window;
    return window;
}

std::function<void(int)> UIModalQuestion::answerHandler() {
    return weakly(this, &UIModalQuestion::answer);
}

void UIModalQuestion::answer(int index) {
    // Answered before the delegate is told, which may show the next question at once.
    if (!std::exchange(visible_, false))
        return;
    if (const auto shown = window())
        shown->resign();
    tellDelegate(index);
    close(true);
}

void UIModalQuestion::dismissWithClickedButtonIndex(int, bool animated) {
    const auto self = shared_from_this();
    if (std::exchange(visible_, false))
        close(animated);
}

void UIModalQuestion::close(bool animated) {
    const auto window = std::exchange(window_, {}).lock();
    if (!window)
        return;
    willClose();
    if (!animated) {
        window->disappear();
        return;
    }
    window->resign();
    animateOut(*window, [window] { window->disappear(); });
}

}
