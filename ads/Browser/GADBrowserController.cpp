#include "ads/Browser/GADBrowserController.h"

#include "ads/Browser/GADBrowserControllerPrivate.h"
#include "ads/Delegate/GADBrowserWebViewDelegate.h"
#include "ads/Notification/GADNotificationCenter.h"
#include "ads/Object/GADPrivateUtilities.h"
#include "ads/Opener/GADOpener.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/Utility/GADIdentifierUtilities.h"
#include "ads/Utility/GADIntrinsicImages.h"
#include "ads/View/GADWebView.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSRunLoop.h"
#include "platform/foundation/NSURLRequest.h"
#include "platform/foundation/Weakly.h"
#include "platform/uikit/UIActivityIndicatorView.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIToolbar.h"

#include <utility>

namespace vistrel {

namespace {

constexpr double kToolbarHeight = 44;
constexpr double kLandscapeToolbarHeight = 30;
constexpr double kItemWidth = 27;
constexpr double kSpinnerSize = 20;

std::shared_ptr<UIBarButtonItem> labelled(std::shared_ptr<UIBarButtonItem> item, const char* label,
                                          double width) {
    item->setWidth(width);
    item->setAccessibilityLabel(NSLocalizedString(label));
    return item;
}

}

GADBrowserController::GADBrowserController()
    : GADViewController(std::make_shared<GADBrowserControllerPrivate>()) {}

GADBrowserController::~GADBrowserController() {
    if (const auto& page = webView())
        page->empty();
}

std::shared_ptr<GADBrowserControllerPrivate> GADBrowserController::vars() const {
    return GADPrivateUtilities::privateObjectForKey<GADBrowserControllerPrivate>(this);
}

std::shared_ptr<GADWebView> GADBrowserController::webView() const {
    return vars()->webView_;
}

std::shared_ptr<UIToolbar> GADBrowserController::toolbar() const {
    return vars()->toolbar_;
}

void GADBrowserController::viewDidLoad() {
    GADViewController::viewDidLoad();
    GADNotificationCenter::defaultCenter().addObserver(
        this, UIApplicationWillEnterForegroundNotification, nullptr,
        weakly(this, [](GADBrowserController& self, const NSNotification&) {
            NSRunLoop::performAfterDelay(0,
                                         weakly(&self, &GADBrowserController::closeUnlessLoaded));
        }));
}

/// Closes a page that is still empty when the user returns from another application.
void GADBrowserController::closeUnlessLoaded() {
    const auto& delegate = vars()->webViewDelegate_;
    if (delegate && !delegate->hasLoadedAtLeastOnce())
        relinquishScreen();
}

void GADBrowserController::viewWillAppear(bool animated) {
    GADViewController::viewWillAppear(animated);
    const auto vars = this->vars();
    if (vars->webView_)
        return;
    const double height = GADIdentifierUtilities::sharedInstance().isOrientationLandscape()
                              ? kLandscapeToolbarHeight
                              : kToolbarHeight;
    buildWebView(height);
    makeItems();
    buildToolbar(height);
    loadReferringURL(std::exchange(vars->urlToLoad_, std::nullopt),
                     std::exchange(vars->referringURLToLoad_, std::nullopt));
}

void GADBrowserController::buildWebView(double toolbarHeight) {
    const auto vars = this->vars();
    const CGSize size = view()->bounds().size;
    vars->webView_ =
        GADWebView::withFrame(CGRectMake(0, 0, size.width, size.height - toolbarHeight));
    vars->webView_->setAutoresizingMask(UIViewAutoresizingFlexibleWidth |
                                        UIViewAutoresizingFlexibleHeight |
                                        UIViewAutoresizingFlexibleBottomMargin);
    vars->webView_->setDataDetectorTypes(UIDataDetectorTypes::All);
    auto delegate = std::make_shared<GADBrowserWebViewDelegate>();
    delegate->setBrowserController(weakReference<GADBrowserController>(this));
    delegate->setViewController(weak_from_this());
    delegate->setOpeningWebView(vars->openingWebView_);
    delegate->opener().setDelegateManager(delegateManager());
    vars->webView_->setDelegate(delegate);
    vars->webViewDelegate_ = std::move(delegate);
    view()->addSubview(vars->webView_);
}

void GADBrowserController::buildToolbar(double toolbarHeight) {
    const auto vars = this->vars();
    const CGSize size = view()->bounds().size;
    vars->toolbar_ = std::make_shared<UIToolbar>(
        CGRectMake(0, size.height - toolbarHeight, size.width, toolbarHeight));
    vars->toolbar_->setAutoresizingMask(
        UIViewAutoresizingFlexibleTopMargin | UIViewAutoresizingFlexibleBottomMargin |
        UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    vars->toolbar_->setTintColor(UIColor::blackColor());
    view()->addSubview(vars->toolbar_);
    refreshToolbar();
    vars->safariButton_->setEnabled(false); // there is no page yet
}

void GADBrowserController::makeItems() {
    using Item = UIBarButtonItem;
    using System = UIBarButtonSystemItem;
    const auto vars = this->vars();
    const auto pictured = [](std::shared_ptr<const UIImage> image, std::function<void()> action) {
        return Item::withImage(std::move(image), UIBarButtonItemStyle::Plain, std::move(action));
    };
    const auto act = [this](auto member) {
        return weakly(this, member);
    };
    vars->flexibleSpaceButton_ = Item::withBarButtonSystemItem(System::FlexibleSpace, {});
    vars->backButton_ = labelled(
        pictured(GADIntrinsicImages::browserBackButton(), act(&GADBrowserController::back)), "Back",
        kItemWidth);
    vars->forwardButton_ = labelled(
        pictured(GADIntrinsicImages::browserForwardButton(), act(&GADBrowserController::forward)),
        "Forward", kItemWidth);
    vars->reloadButton_ =
        labelled(Item::withBarButtonSystemItem(System::Refresh, act(&GADBrowserController::reload)),
                 "Reload", kItemWidth);
    vars->safariButton_ = labelled(
        Item::withBarButtonSystemItem(System::Action, act(&GADBrowserController::openInSafari)),
        "View in Safari", kItemWidth);
    vars->doneButton_ =
        Item::withBarButtonSystemItem(System::Done, act(&GADViewController::relinquishScreen));
    vars->doneButton_->setStyle(UIBarButtonItemStyle::Done);
    vars->doneButton_->setAccessibilityLabel(NSLocalizedString("Done"));
    vars->spinner_ = std::make_shared<UIActivityIndicatorView>(UIActivityIndicatorViewStyle::White);
    vars->spinner_->setFrame(CGRectMake(0, 0, kSpinnerSize, kSpinnerSize));
    vars->spinner_->setAutoresizingMask(UIViewAutoresizingFlexibleLeftMargin |
                                        UIViewAutoresizingFlexibleRightMargin);
    vars->spinnerContainingButton_ =
        labelled(Item::withCustomView(vars->spinner_), "Spinner", kSpinnerSize);
    vars->backButton_->setEnabled(false);
    vars->forwardButton_->setEnabled(false);
    vars->safariButton_->setEnabled(false);
}

void GADBrowserController::refreshToolbar() {
    const auto vars = this->vars();
    if (!vars->toolbar_)
        return;
    const bool loading = vars->webView_->isLoading();
    vars->backButton_->setEnabled(vars->webView_->canGoBack());
    vars->forwardButton_->setEnabled(vars->webView_->canGoForward());
    vars->safariButton_->setEnabled(!loading);
    if (loading)
        vars->spinner_->startAnimating();
    else
        vars->spinner_->stopAnimating();
    const auto& space = vars->flexibleSpaceButton_;
    vars->toolbar_->setItems({vars->backButton_, space, vars->forwardButton_, space,
                              loading ? vars->spinnerContainingButton_ : vars->reloadButton_, space,
                              vars->safariButton_, space, vars->doneButton_});
}

void GADBrowserController::load(const std::optional<NSURL>& url) {
    loadReferringURL(url, std::nullopt);
}

void GADBrowserController::loadReferringURL(const std::optional<NSURL>& url,
                                            const std::optional<NSURL>& referringURL) {
    if (!url)
        return;
    const auto vars = this->vars();
    if (!vars->webView_) {
        vars->urlToLoad_ = url;
        vars->referringURLToLoad_ = referringURL;
        return;
    }
    NSURLRequest request(url);
    if (referringURL)
        request.setValueForHTTPHeaderField(referringURL->absoluteString(), "Referer");
    vars->webView_->loadRequest(request);
}

void GADBrowserController::back() {
    if (const auto page = webView(); page && page->canGoBack())
        page->goBack();
}

void GADBrowserController::forward() {
    if (const auto page = webView(); page && page->canGoForward())
        page->goForward();
}

void GADBrowserController::reload() {
    if (const auto page = webView())
        page->reload();
}

void GADBrowserController::stop() {
    if (const auto page = webView())
        page->stopLoading();
}

void GADBrowserController::openInSafari() {
    const auto page = webView();
    if (!page)
        return;
    const auto opener = std::make_shared<GADOpener>();
    opener->setDelegateManager(delegateManager());
    opener->openApp(NSURL::URLWithString(page->URLString()));
    GADStatistics::sharedStatistics().setBreakOutToSafari();
}

}
