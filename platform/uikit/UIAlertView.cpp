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

/// The box springs up, overshoots and settles.
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
    auto buttons = std::move(otherButtonTitles);
    buttons.insert(buttons.begin(), std::move(cancelButtonTitle));
    std::shared_ptr<UIAlertView> alert(new UIAlertView(std::move(buttons)));
    alert->title_ = std::move(title);
    alert->message_ = std::move(message);
    alert->delegate_ = std::move(delegate);
    return alert;
}

UIAlertView::~UIAlertView() = default;

std::vector<std::shared_ptr<UIAlertView>> UIAlertView::visibleAlerts() {
    return visibleQuestions<UIAlertView>();
}

void UIAlertView::setAlertViewStyle(UIAlertViewStyle style) {
    fields_.clear();
    if (style == UIAlertViewStyle::Default)
        return;
    if (style == UIAlertViewStyle::PlainTextInput) {
        fields_.push_back(std::make_shared<UITextField>());
        return;
    }
    for (const char* placeholder : {"Name", "Password"}) {
        fields_.push_back(std::make_shared<UITextField>());
        fields_.back()->setPlaceholder(NSLocalizedString(placeholder));
    }
    fields_.back()->setSecureTextEntry(true);
}

const std::shared_ptr<UITextField>& UIAlertView::textFieldAtIndex(int index) const {
    return fields_.at(static_cast<std::size_t>(index));
}

std::shared_ptr<UIAlertPanel> UIAlertView::makePanel() {
    const double space = 480 - kStatusBarHeight - 2 * kScreenMargin;
    auto panel = std::make_shared<UIAlertPanel>(
        UIAlertPanel::Content{title_, message_, buttons(), rows_, fields_}, space, answerHandler());
    panel->setCenter({160, std::floor((480 + kStatusBarHeight) / 2)});
    return panel;
}

void UIAlertView::show() {
    if (isVisible())
        return;
    const auto below = visibleAlerts();
    if (!below.empty())
        below.back()->setShown(false);
    const auto window = openWindow(UIModalWindow::Dimming::Round);
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

/// Steps aside while another alert is above, and comes back.
void UIAlertView::setShown(bool shown) {
    if (const auto own = window()) {
        own->setUserInteractionEnabled(shown);
        fade(*own, shown ? 1 : 0, nullptr);
    }
}

void UIAlertView::tellDelegate(int index) {
    if (const auto delegate = delegate_.lock())
        delegate->alertViewClickedButtonAtIndex(*this, index);
}

void UIAlertView::willClose() {
    const auto below = visibleAlerts();
    if (!below.empty())
        below.back()->setShown(true);
}

void UIAlertView::animateOut(UIModalWindow& window, std::function<void()> done) {
    fade(window, 0, std::move(done));
}

}
