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
    const bool destroys = !destructiveButtonTitle.empty();
    const bool cancels = !cancelButtonTitle.empty();
    auto buttons = std::move(otherButtonTitles);
    if (destroys)
        buttons.insert(buttons.begin(), std::move(destructiveButtonTitle));
    if (cancels)
        buttons.push_back(std::move(cancelButtonTitle));
    std::shared_ptr<UIActionSheet> sheet(new UIActionSheet(std::move(buttons)));
    sheet->title_ = std::move(title);
    sheet->delegate_ = std::move(delegate);
    sheet->destructiveIndex_ = destroys ? 0 : -1;
    sheet->cancelIndex_ = cancels ? sheet->numberOfButtons() - 1 : -1;
    return sheet;
}

UIActionSheet::~UIActionSheet() = default;

std::shared_ptr<UIActionSheet> UIActionSheet::visibleSheet() {
    const auto sheets = visibleQuestions<UIActionSheet>();
    return sheets.empty() ? nullptr : sheets.back();
}

void UIActionSheet::showInView(UIView&) {
    if (isVisible() || buttons().empty())
        return;
    const CGSize screen = UIScreen::mainScreen().bounds().size;
    const auto window = openWindow(UIModalWindow::Dimming::Even);
    const UISheetPanel::Content content{title_, buttons(), cancelIndex_, destructiveIndex_, style_};
    const auto panel = std::make_shared<UISheetPanel>(content, screen.width, answerHandler());
    const double height = panel->bounds().size.height;
    UIViewAnimation::withoutAnimation([&] {
        panel->setCenter({screen.width / 2, screen.height + height / 2});
        window->dimmer().setAlpha(0);
    });
    window->stage().addSubview(panel);
    window->appear(panel);
    slide(*window, *panel, 1, -height, nullptr);
}

void UIActionSheet::tellDelegate(int index) {
    if (const auto delegate = delegate_.lock())
        delegate->actionSheetClickedButtonAtIndex(*this, index);
}

void UIActionSheet::animateOut(UIModalWindow& window, std::function<void()> done) {
    UIView& panel = *window.stage().subviews().front();
    slide(window, panel, 0, panel.bounds().size.height, std::move(done));
}

}
