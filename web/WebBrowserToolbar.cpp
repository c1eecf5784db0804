#include "web/WebBrowserToolbar.h"

#include "platform/foundation/NSBundle.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIBarButtonItem.h"
#include "platform/uikit/UIToolbar.h"
#include "web/UIToolbarAdditions.h"

namespace vistrel {

namespace {

constexpr int kForwardTag = 1;
constexpr int kBackTag = 2;
constexpr int kReloadTag = 3;

std::shared_ptr<UIBarButtonItem> imageItem(const char* image, const char* label,
                                           const std::function<void()>& action, int tag) {
    auto item =
        UIBarButtonItem::withImage(UIImage::imageNamed(image), UIBarButtonItemStyle::Plain, action);
    item->setAccessibilityLabel(NSLocalizedString(label));
    item->setTag(tag);
    return item;
}

std::shared_ptr<UIBarButtonItem> reloadItem(UIBarButtonSystemItem systemItem,
                                            const std::function<void()>& action) {
    auto item = UIBarButtonItem::withBarButtonSystemItem(systemItem, action);
    item->setTag(kReloadTag);
    return item;
}

}

WebBrowserToolbar::WebBrowserToolbar(const WebBrowserActions& actions)
    : toolbar_(std::make_shared<UIToolbar>())
    , backButton_(imageItem("WebBrowserBack.png", "Back", actions.back, kBackTag))
    , forwardButton_(imageItem("WebBrowserForward.png", "Forward", actions.forward, kForwardTag))
    , refreshButton_(reloadItem(UIBarButtonSystemItem::Refresh, actions.refresh))
    , stopButton_(reloadItem(UIBarButtonSystemItem::Stop, actions.stop)) {
    setHistory(false, false);
    const auto home = imageItem("WebBrowserHome.png", "Home", actions.home, 0);
    const auto space =
        UIBarButtonItem::withBarButtonSystemItem(UIBarButtonSystemItem::FlexibleSpace, {});
    toolbar_->setAutoresizingMask(UIViewAutoresizingFlexibleWidth |
                                  UIViewAutoresizingFlexibleTopMargin);
    toolbar_->setItems({backButton_, space, home, space, refreshButton_, space, forwardButton_});
}

void WebBrowserToolbar::setLoading(bool isLoading) {
    replaceItemWithTagWithItem(*toolbar_, kReloadTag, isLoading ? stopButton_ : refreshButton_);
}

void WebBrowserToolbar::setHistory(bool canGoBack, bool canGoForward) {
    backButton_->setEnabled(canGoBack);
    forwardButton_->setEnabled(canGoForward);
}

}
