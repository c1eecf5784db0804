#include "platform/uikit/UIActionSheet.h"

#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIModalWindow.h"
#include "platform/uikit/UIScreen.h"
#include "platform/uikit/UISheetPanel.h"
#include "platform/uikit/UIViewAnimation.h"

namespace vistrel {

namespace {

constexpr double kSlideSeconds = 0.3;

/// Dims or lights the window and moves the panel by `distance`.
void slide(UIModalWindow& window, UIView& panel, double alpha, double distance,
           std::function<void()> done) {
    UIViewAnimation::beginAnimations();
    UIViewAnimation::setAnimationDuration(kSlideSeconds);
    window.dimmer().setAlpha(alpha);
    panel.setCenter({panel.center().x, panel.center().y + distance});
    if (done)
        UIViewAnimation::setAnimationDidStop([done = std::move(done)](bool) { done(); });
    UIViewAnimation::commitAnimations();
}

}

std::shared_ptr<UIActionSheet>
UIActionSheet::withTitle(std::string title, std::weak_ptr<UIActionSheetDelegate> delegate,
                         std::string cancelButtonTitle, std::string destructiveButtonTitle,
                         std::vector<std::string> otherButtonTitles) {
    std::shared_ptr<UIActionSheet> sheet(new UIActionSheet);
    sheet->title_ = std::move(title);
    sheet->delegate_ = std::move(delegate);
    if (!destructiveButtonTitle.empty()) {
        sheet->destructiveIndex_ = 0;
        sheet->buttons_.push_back(std::move(destructiveButtonTitle));
    }
    for (auto& button : otherButtonTitles)
        sheet->buttons_.push_back(std::move(button));
    if (!cancelButtonTitle.empty()) {
        sheet->cancelIndex_ = sheet->numberOfButtons();
        sheet->buttons_.push_back(std::move(cancelButtonTitle));
    }
    return sheet;
}

UIActionSheet::~UIActionSheet() = default;

std::string UIActionSheet::buttonTitleAtIndex(int index) const {
    const bool exists = index >= 0 && index < numberOfButtons();
    return exists ? buttons_[static_cast<std::size_t>(index)] : std::string();
}

std::shared_ptr<UIActionSheet> UIActionSheet::visibleSheet() {
    std::shared_ptr<UIActionSheet> top;
    for (const auto& view : UIApplication::sharedApplication().screenView().subviews()) {
        const auto* window = dynamic_cast<const UIModalWindow*>(view.get());
        auto sheet = window ? std::dynamic_pointer_cast<UIActionSheet>(window->owner()) : nullptr;
        if (sheet && sheet->isVisible())
            top = std::move(sheet);
    }
    return top;
}

void UIActionSheet::showInView(UIView&) {
    if (visible_ || buttons_.empty())
        return;
    visible_ = true;
    const CGSize screen = UIScreen::mainScreen().bounds().size;
    const auto window =
        std::make_shared<UIModalWindow>(UIModalWindow::Dimming::Even, shared_from_this());
    window_ = window;
    const auto weak = weak_from_this();
    const UISheetPanel::Content content{title_, buttons_, cancelIndex_, destructiveIndex_, style_};
    const auto panel = std::make_shared<UISheetPanel>(content, screen.width, [weak](int index) {
        if (const auto self = weak.lock())
            self->buttonTapped(index);
    });
    const double height = panel->bounds().size.height;
    UIViewAnimation::withoutAnimation([&] {
        panel->setCenter({screen.width / 2, screen.height + height / 2});
        window->dimmer().setAlpha(0);
    });
    window->stage().addSubview(panel);
    window->appear(panel);
    slide(*window, *panel, 1, -height, nullptr);
}

void UIActionSheet::buttonTapped(int index) {
    if (!visible_)
        return;
    const auto self = shared_from_this();
    visible_ = false;
    if (const auto window = window_.lock())
        window->resign();
    if (const auto delegate = delegate_.lock())
        delegate->actionSheetClickedButtonAtIndex(*this, index);
    close(true);
}

void UIActionSheet::dismissWithClickedButtonIndex(int, bool animated) {
    if (!visible_)
        return;
    const auto self = shared_from_this();
    visible_ = false;
    close(animated);
}

void UIActionSheet::close(bool animated) {
    const auto window = window_.lock();
    if (!window)
        return;
    window_.reset();
    if (!animated) {
        window->disappear();
        return;
    }
    window->resign();
    UIView& panel = *window->stage().subviews().front();
    slide(*window, panel, 0, panel.bounds().size.height, [window] { window->disappear(); });
}

}
