#include "platform/uikit/UIAlertView.h"

#include "platform/foundation/NSBundle.h"
#include "platform/uikit/UIAlertPanel.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIModalWindow.h"
#include "platform/uikit/UITextField.h"
#include "platform/uikit/UIViewAnimation.h"

#include <cmath>
#include <iterator>

namespace vistrel {

namespace {

constexpr double kFadeSeconds = 0.2;
constexpr double kScreenMargin = 10;
constexpr double kStatusBarHeight = 20;

struct BounceStep {
    double scale;
    double seconds;
};
constexpr BounceStep kBounce[] = {{1.08, 0.17}, {0.95, 0.11}, {1, 0.09}};

void bounceFrom(std::size_t step, const std::shared_ptr<UIView>& view) {
    UIViewAnimation::beginAnimations();
    UIViewAnimation::setAnimationDuration(kBounce[step].seconds);
    view->setTransform(CGAffineTransformMakeScale(kBounce[step].scale, kBounce[step].scale));
    if (step + 1 < std::size(kBounce))
        UIViewAnimation::setAnimationDidStop([step, view](bool) { bounceFrom(step + 1, view); });
    UIViewAnimation::commitAnimations();
}

/// The box springs up, over its size, and settles.
void bounce(const std::shared_ptr<UIView>& view) {
    UIViewAnimation::withoutAnimation(
        [&] { view->setTransform(CGAffineTransformMakeScale(0.5, 0.5)); });
    bounceFrom(0, view);
}

void fade(UIView& view, double alpha, std::function<void()> done) {
    UIViewAnimation::beginAnimations();
    UIViewAnimation::setAnimationDuration(kFadeSeconds);
    view.setAlpha(alpha);
    if (done)
        UIViewAnimation::setAnimationDidStop([done = std::move(done)](bool) { done(); });
    UIViewAnimation::commitAnimations();
}

}

std::shared_ptr<UIAlertView> UIAlertView::withTitle(std::string title, std::string message,
                                                    std::weak_ptr<UIAlertViewDelegate> delegate,
                                                    std::string cancelButtonTitle,
                                                    std::vector<std::string> otherButtonTitles) {
    std::shared_ptr<UIAlertView> alert(new UIAlertView);
    alert->title_ = std::move(title);
    alert->message_ = std::move(message);
    alert->delegate_ = std::move(delegate);
    alert->buttons_.push_back(std::move(cancelButtonTitle));
    for (auto& button : otherButtonTitles)
        alert->buttons_.push_back(std::move(button));
    return alert;
}

UIAlertView::~UIAlertView() = default;

std::string UIAlertView::buttonTitleAtIndex(int index) const {
    const bool exists = index >= 0 && index < numberOfButtons();
    return exists ? buttons_[static_cast<std::size_t>(index)] : std::string();
}

std::vector<std::shared_ptr<UIAlertView>> UIAlertView::visibleAlerts() {
    std::vector<std::shared_ptr<UIAlertView>> alerts;
    for (const auto& view : UIApplication::sharedApplication().screenView().subviews()) {
        const auto* window = dynamic_cast<const UIModalWindow*>(view.get());
        auto alert = window ? std::dynamic_pointer_cast<UIAlertView>(window->owner()) : nullptr;
        if (alert && alert->isVisible())
            alerts.push_back(std::move(alert));
    }
    return alerts;
}

void UIAlertView::setAlertViewStyle(UIAlertViewStyle style) {
    fields_.clear();
    if (style == UIAlertViewStyle::Default)
        return;
    for (const char* placeholder : {"Name", "Password"}) {
        fields_.push_back(std::make_shared<UITextField>());
        fields_.back()->setPlaceholder(
            NSBundle::mainBundle().localizedStringForKeyValue(placeholder));
    }
    fields_.back()->setSecureTextEntry(true);
}

const std::shared_ptr<UITextField>& UIAlertView::textFieldAtIndex(int index) const {
    return fields_.at(static_cast<std::size_t>(index));
}

std::shared_ptr<UIAlertPanel> UIAlertView::makePanel() {
    const auto weak = weak_from_this();
    const double space = 480 - kStatusBarHeight - 2 * kScreenMargin;
    auto panel = std::make_shared<UIAlertPanel>(
        UIAlertPanel::Content{title_, message_, buttons_, rows_, fields_}, space,
        [weak](int index) {
            if (const auto self = weak.lock())
                self->buttonTapped(index);
        });
    panel->setCenter({160, std::floor((480 + kStatusBarHeight) / 2)});
    return panel;
}

void UIAlertView::show() {
    if (visible_)
        return;
    const auto below = visibleAlerts();
    if (!below.empty())
        below.back()->setShown(false);
    visible_ = true;
    const auto window =
        std::make_shared<UIModalWindow>(UIModalWindow::Dimming::Round, shared_from_this());
    window_ = window;
    const auto panel = makePanel();
    window->stage().addSubview(panel);
    window->appear(panel);
    UIViewAnimation::withoutAnimation([&] { window->setAlpha(0); });
    fade(*window, 1, nullptr);
    bounce(panel);
    panel->flashScrollIndicators();
    if (!fields_.empty())
        UIApplication::sharedApplication().events().setFirstResponder(fields_.front());
}

/// Steps aside while another alert lies above, and comes back.
void UIAlertView::setShown(bool shown) {
    if (const auto window = window_.lock()) {
        window->setUserInteractionEnabled(shown);
        fade(*window, shown ? 1 : 0, nullptr);
    }
}

void UIAlertView::buttonTapped(int index) {
    if (!visible_)
        return;
    const auto self = shared_from_this();
    visible_ = false;
    if (const auto window = window_.lock())
        window->resign();
    if (const auto delegate = delegate_.lock())
        delegate->alertViewClickedButtonAtIndex(*this, index);
    close(true);
}

void UIAlertView::dismissWithClickedButtonIndex(int, bool animated) {
    if (!visible_)
        return;
    const auto self = shared_from_this();
    visible_ = false;
    close(animated);
}

void UIAlertView::close(bool animated) {
    const auto window = window_.lock();
    if (!window)
        return;
    window_.reset();
    const auto below = visibleAlerts();
    if (!below.empty())
        below.back()->setShown(true);
    if (!animated) {
        window->disappear();
        return;
    }
    window->resign();
    fade(*window, 0, [window] { window->disappear(); });
}

}
