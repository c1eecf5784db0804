#include "ads/WebApp/GADWebAppViewController.h"

#include "ads/Delegate/GADWebAppWebViewDelegate.h"
#include "ads/Notification/GADNotificationCenter.h"
#include "ads/Object/GADObjectPrivate.h"
#include "ads/Object/GADPrivateUtilities.h"
#include "ads/Opener/GADOpener.h"
#include "ads/Utility/GADIntrinsicImages.h"
#include "ads/View/GADWebView.h"
#include "ads/WebApp/GADWebAppViewControllerPrivate.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSURLRequest.h"
#include "platform/foundation/Weakly.h"
#include "platform/uikit/UIActivityIndicatorView.h"
#include "platform/uikit/UIButton.h"

#include <utility>

namespace vistrel {

namespace {
constexpr double kCloseButtonSize = 32;
constexpr double kSpinnerSize = 20;
}

GADWebAppViewController::GADWebAppViewController()
    : GADViewController(std::make_shared<GADWebAppViewControllerPrivate>()) {
    vars()->loadingSpinner_ =
        std::make_shared<UIActivityIndicatorView>(UIActivityIndicatorViewStyle::White);
}

GADWebAppViewController::~GADWebAppViewController() {
    const auto vars = this->vars();
    if (vars->webViewDelegate_)
        vars->webViewDelegate_->releaseWithWebView(vars->webView_);
}

std::shared_ptr<GADWebAppViewControllerPrivate> GADWebAppViewController::vars() const {
    return GADPrivateUtilities::privateObjectForKey<GADWebAppViewControllerPrivate>(this);
}

std::shared_ptr<GADWebView> GADWebAppViewController::webView() const {
    return vars()->webView_;
}

std::shared_ptr<GADObjectPrivate> GADWebAppViewController::adController() const {
    return vars()->adController_.lock();
}

void GADWebAppViewController::setAdController(std::weak_ptr<GADObjectPrivate> controller) {
    vars()->adController_ = std::move(controller);
}

void GADWebAppViewController::load(const NSURL& url) {
    vars()->urlToLoad_ = url;
    loadPending();
}

void GADWebAppViewController::loadHTMLBaseURL(std::string html, std::optional<NSURL> baseURL) {
    vars()->htmlToLoad_ = std::move(html);
    vars()->htmlBaseURLToLoad_ = std::move(baseURL);
    loadPending();
}

void GADWebAppViewController::viewWillAppear(bool animated) {
    GADViewController::viewWillAppear(animated);
    if (webView())
        return;
    buildWebView();
    addLoadingSpinner();
    addCloseButton();
    loadPending();
}

void GADWebAppViewController::buildWebView() {
    const auto vars = this->vars();
    auto delegate = std::make_shared<GADWebAppWebViewDelegate>();
    delegate->setWebAppPrivate(weakReference<GADWebAppViewControllerPrivate>(vars.get()));
    delegate->setViewController(weak_from_this());
    delegate->setOpeningWebView(vars->openingWebView_);
    delegate->opener().setDelegateManager(delegateManager());
    delegate->opener().setAdController(vars->adController_);
    vars->webView_ = GADWebView::withFrame(view()->bounds());
    vars->webView_->setDelegate(delegate);
    vars->webViewDelegate_ = std::move(delegate);
    view()->addSubview(vars->webView_);
}

void GADWebAppViewController::loadPending() {
    const auto vars = this->vars();
    if (!vars->webView_)
        return;
    const auto url = std::exchange(vars->urlToLoad_, std::nullopt);
    const auto html = std::exchange(vars->htmlToLoad_, std::nullopt);
    const auto baseURL = std::exchange(vars->htmlBaseURLToLoad_, std::nullopt);
    if (url)
        vars->webView_->loadRequest(NSURLRequest(url));
    else if (html)
        vars->webView_->loadHTMLStringBaseURL(*html, baseURL);
}

void GADWebAppViewController::addCloseButton() {
    const auto vars = this->vars();
    vars->closeButton_ = UIButton::buttonWithType(UIButtonType::Custom);
    vars->closeButton_->setFrame(CGRectMake(0, 0, kCloseButtonSize, kCloseButtonSize));
    vars->closeButton_->setImageForState(GADIntrinsicImages::closeButton(), UIControlState::Normal);
    vars->closeButton_->setShowsTouchWhenHighlighted(true);
    vars->closeButton_->setAccessibility(
        {UIAccessibilityRole::Button, NSLocalizedString("Close"), {}, true});
    vars->closeButton_->addTarget(weakly(this, &GADViewController::relinquishScreen),
                                  UIControlEventTouchUpInside);
    view()->addSubview(vars->closeButton_);
}

void GADWebAppViewController::addLoadingSpinner() {
    const auto vars = this->vars();
    if (!vars->loadingSpinner_)
        return;
    const CGSize size = view()->bounds().size;
    vars->loadingSpinner_->setFrame(CGRectMake((size.width - kSpinnerSize) / 2,
                                               (size.height - kSpinnerSize) / 2, kSpinnerSize,
                                               kSpinnerSize));
    vars->loadingSpinner_->setAutoresizingMask(UIViewAutoresizingFlexibleLeftMargin |
                                               UIViewAutoresizingFlexibleRightMargin);
    vars->loadingSpinner_->startAnimating();
    vars->webView_->addSubview(vars->loadingSpinner_);
}

void GADWebAppViewController::viewDidAppear(bool animated) {
    GADViewController::viewDidAppear(animated);
    if (const auto vars = this->vars(); vars->webViewDelegate_)
        vars->webViewDelegate_->postOnShow(*vars->webView_);
}

void GADWebAppViewController::viewDidDisappear(bool animated) {
    if (const auto page = webView())
        GADNotificationCenter::postJSNotificationUserInfoWebView("onhide", std::nullopt, *page);
    GADViewController::viewDidDisappear(animated);
}

}
