#include "web/WebBrowserViewController.h"

#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSError.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSURLConnection.h"
#include "platform/foundation/NSURLRequest.h"
#include "platform/foundation/NSURLResponse.h"
#include "platform/foundation/Weakly.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIActivityIndicatorView.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIBarButtonItem.h"
#include "platform/uikit/UICommand.h"
#include "platform/uikit/UINavigationBar.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UITextField.h"
#include "platform/uikit/UIToolbar.h"
#include "platform/uikit/UIWebView.h"
#include "platform/uikit/UIWindow.h"
#include "settings/Manners.h"
#include "web/DownloadableMedia.h"
#include "web/FileDownloadViewController.h"
#include "web/PageNotice.h"
#include "web/UIToolbarAdditions.h"

#include <algorithm>
#include <utility>

namespace vistrel {

namespace {

constexpr int kForwardTag = 1;
constexpr int kBackTag = 2;
constexpr int kReloadTag = 3;

/// A page with many frames must not bury the browser under download screens.
constexpr std::size_t kMostOffers = 2;

/// Keeps pages from opening windows that the phone does not have.
constexpr const char* kSameFrameScript = "{ var a = document.getElementsByTagName(\"a\"); for (var "
                                         "i=0; i<a.length; i++) a[i].target = \"_self\"; }";

constexpr double kZoomStep = 1.2;

/// What is typed without a scheme is on the web.
std::optional<NSURL> typedAddress(const std::string& text) {
    const bool hasScheme = text.find("://") != std::string::npos;
    return NSURL::URLWithString(hasScheme ? text : "http://" + text);
}

}

bool isDownloadableMIMEType(const std::string& mimeType) {
    return std::ranges::find(kDownloadableMIMETypes, mimeType) != kDownloadableMIMETypes.end();
}

std::shared_ptr<WebBrowserViewController>
WebBrowserViewController::withTitleURL(std::string title, const std::string& address) {
    auto browser = std::make_shared<WebBrowserViewController>();
    browser->setHidesBottomBarWhenPushed(false);
    browser->navigationBarTitle_ = std::move(title);
    browser->URL_ = NSURL::URLWithString(address);
    browser->download_ = true;
    return browser;
}

WebBrowserViewController::WebBrowserViewController() {
    setHidesBottomBarWhenPushed(true);
}

WebBrowserViewController::~WebBrowserViewController() = default;

void WebBrowserViewController::openURL(const std::optional<NSURL>& url) {
    openRequest(NSURLRequest(url));
}

void WebBrowserViewController::openRequest(const NSURLRequest& request) {
    if (webView_)
        webView_->loadRequest(request);
}

void WebBrowserViewController::downloadFileAtURL(const NSURL& url) {
    // An answer may come when the screen has already left the stack.
    if (navigationController())
        navigationController()->pushViewController(FileDownloadViewController::withURL(url), true);
}

void WebBrowserViewController::go(Move move) {
    lastMove_ = move;
    if (webView_)
        (webView_.get()->*move)();
}

void WebBrowserViewController::backAction() {
    go(&UIWebView::goBack);
}

void WebBrowserViewController::forwardAction() {
    go(&UIWebView::goForward);
}

void WebBrowserViewController::refreshAction() {
    go(&UIWebView::reload);
}

void WebBrowserViewController::stopAction() {
    if (webView_)
        webView_->stopLoading();
}

void WebBrowserViewController::homeAction() {
    // A start address that is a media file left nothing to go on with: it is probed again.
    if (webView_ && download_)
        webView_->setDelegate(weakReference<UIWebViewDelegate>(this));
    openURL(URL_);
}

void WebBrowserViewController::addressAction() {
    const auto prompt = UIAlertView::withTitle(
        NSLocalizedString("Go to Address"), {}, weakReference<UIAlertViewDelegate>(this),
        NSLocalizedString("Cancel"), {NSLocalizedString("Go")});
    prompt->setAlertViewStyle(UIAlertViewStyle::PlainTextInput);
    prompt->textFieldAtIndex(0)->setPlaceholder(NSLocalizedString("Address"));
    addressPrompt_ = prompt;
    prompt->show();
}

bool WebBrowserViewController::zoom(double factor) {
    webView_->setPageZoom(factor > 0 ? webView_->pageZoom() * factor : 1);
    return true;
}

bool WebBrowserViewController::performCommand(UICommand command) {
    if (!webView_)
        return false;
    switch (command) {
    case UICommand::Reload:
        refreshAction();
        return true;
    case UICommand::GoToAddress:
        addressAction();
        return true;
    case UICommand::Back:
        if (!webView_->canGoBack())
            return false;
        backAction();
        return true;
    case UICommand::Forward:
        forwardAction();
        return true;
    case UICommand::ZoomIn:
        return zoom(kZoomStep);
    case UICommand::ZoomOut:
        return zoom(1 / kZoomStep);
    case UICommand::ZoomReset:
        return zoom(0);
    default:
        return false;
    }
}

void WebBrowserViewController::viewDidLoad() {
    UIViewController::viewDidLoad();
    navigationItem().setTitle(navigationBarTitle_);
    const CGSize size = view()->frame().size;

    webView_ =
        std::make_shared<UIWebView>(CGRectMake(0, 0, size.width, size.height - 2 * kUIBarHeight));
    webView_->setDelegate(weakReference<UIWebViewDelegate>(this));
    webView_->setScalesPageToFit(true);
    view()->addSubview(webView_);
    openURL(URL_);

    auto activity = std::make_shared<UIActivityIndicatorView>(UIActivityIndicatorViewStyle::White);
    activity->startAnimating();
    activityItem_ = UIBarButtonItem::withCustomView(activity);

    makeToolbarItems();
    toolbar_->setFrame(CGRectMake(0, size.height - kUIBarHeight, size.width, kUIBarHeight));
    view()->addSubview(toolbar_);
}

void WebBrowserViewController::makeToolbarItems() {
    const auto imageItem = [this](const char* image, const char* label, int tag,
                                  void (WebBrowserViewController::*action)()) {
        auto item = UIBarButtonItem::withImage(UIImage::imageNamed(image),
                                               UIBarButtonItemStyle::Plain, weakly(this, action));
        item->setTag(tag);
        item->setAccessibilityLabel(NSLocalizedString(label));
        return item;
    };
    const auto systemItem = [this](UIBarButtonSystemItem system,
                                   void (WebBrowserViewController::*action)()) {
        auto item = UIBarButtonItem::withBarButtonSystemItem(system, weakly(this, action));
        item->setTag(kReloadTag);
        return item;
    };
    backButton_ =
        imageItem("WebBrowserBack.png", "Back", kBackTag, &WebBrowserViewController::backAction);
    forwardButton_ = imageItem("WebBrowserForward.png", "Forward", kForwardTag,
                               &WebBrowserViewController::forwardAction);
    const auto home =
        imageItem("WebBrowserHome.png", "Home", 0, &WebBrowserViewController::homeAction);
    refreshButton_ =
        systemItem(UIBarButtonSystemItem::Refresh, &WebBrowserViewController::refreshAction);
    stopButton_ = systemItem(UIBarButtonSystemItem::Stop, &WebBrowserViewController::stopAction);
    backButton_->setEnabled(false);
    forwardButton_->setEnabled(false);

    const auto space =
        UIBarButtonItem::withBarButtonSystemItem(UIBarButtonSystemItem::FlexibleSpace, {});
    toolbar_ = std::make_shared<UIToolbar>();
    toolbar_->setAutoresizingMask(UIViewAutoresizingFlexibleWidth |
                                  UIViewAutoresizingFlexibleTopMargin);
    if (navigationController())
        toolbar_->setTintColor(navigationController()->navigationBar()->tintColor());
    toolbar_->setItems({backButton_, space, home, space, refreshButton_, space, forwardButton_});
}

void WebBrowserViewController::viewWillAppear(bool animated) {
    UIViewController::viewWillAppear(animated);
    offered_.clear();
    if (webView_ && manners().watchesPagesAgain)
        webView_->setDelegate(weakReference<UIWebViewDelegate>(this));
}

void WebBrowserViewController::viewWillDisappear(bool animated) {
    UIViewController::viewWillDisappear(animated);
    if (view()->window())
        view()->window()->makeKeyWindow();
    if (webView_) {
        webView_->stopLoading();
        webView_->setDelegate({});
    }
    UIApplication::sharedApplication().setNetworkActivityIndicatorVisible(false);
}

void WebBrowserViewController::viewDidUnload() {
    if (webView_)
        webView_->setDelegate({});
    webView_.reset();
    toolbar_.reset();
    backButton_.reset();
    forwardButton_.reset();
    refreshButton_.reset();
    activityItem_.reset();
}

bool WebBrowserViewController::shouldAutorotateToInterfaceOrientation(
    UIInterfaceOrientation orientation) {
    return orientation == UIInterfaceOrientation::Portrait;
}

bool WebBrowserViewController::webViewShouldStartLoadWithRequest(UIWebView& webView,
                                                                 const NSURLRequest& request,
                                                                 UIWebViewNavigationType type) {
    return webViewShouldStartNavigation(webView, request, {type});
}

bool WebBrowserViewController::webViewShouldStartNavigation(UIWebView&, const NSURLRequest& request,
                                                            const UIWebViewNavigation& navigation) {
    updateHistoryButtons();
    if (navigation.isSameDocument)
        return !download_;
    if (!mayResend(request, navigation.type))
        return false;
    visits_.begin(request, navigation.isRedirect, weakReference<NSURLConnectionDelegate>(this));
    return !download_;
}

bool WebBrowserViewController::mayResend(const NSURLRequest& request,
                                         UIWebViewNavigationType type) {
    const bool repeats = type == UIWebViewNavigationType::Reload ||
                         type == UIWebViewNavigationType::BackForward ||
                         type == UIWebViewNavigationType::FormResubmitted;
    if (!repeats || request.isSafeToRepeat() || std::exchange(resends_, false))
        return true;
    UIAlertView::withTitle(NSLocalizedString("Send Again?"),
                           NSLocalizedString("To show this page, the form has to be sent again."),
                           weakReference<UIAlertViewDelegate>(this), NSLocalizedString("Cancel"),
                           {NSLocalizedString("Send")})
        ->show();
    return false;
}

void WebBrowserViewController::alertViewClickedButtonAtIndex(UIAlertView& alertView,
                                                             int buttonIndex) {
    if (buttonIndex == 0)
        return;
    if (addressPrompt_.lock().get() == &alertView) {
        openURL(typedAddress(alertView.textFieldAtIndex(0)->text()));
        return;
    }
    if (!lastMove_)
        return;
    resends_ = true;
    go(lastMove_);
}

bool WebBrowserViewController::webViewShouldShowResponse(UIWebView&,
                                                         const NSURLResponse& response) {
    if (!isDownloadableMIMEType(response.MIMEType()))
        return true;
    if (visits_.foundMedia(response.URL().absoluteString()))
        openMedia(response.URL());
    return false;
}

std::optional<NSURLRequest> WebBrowserViewController::connectionWillSendRequestRedirectResponse(
    NSURLConnection& connection, const NSURLRequest& request,
    const NSURLResponse* redirectResponse) {
    if (redirectResponse && request.URL())
        visits_.redirected(connection, request.URL()->absoluteString());
    return request;
}

void WebBrowserViewController::connectionDidReceiveResponse(NSURLConnection& connection,
                                                            const NSURLResponse& response) {
    if (isDownloadableMIMEType(response.MIMEType())) {
        const bool isFirst = visits_.foundMedia(connection);
        connection.cancel();
        if (isFirst)
            openMedia(response.URL());
    } else if (download_) {
        download_ = false;
        openURL(response.URL());
    }
}

void WebBrowserViewController::openMedia(const NSURL& url) {
    const std::string& address = url.absoluteString();
    if (offered_.size() == kMostOffers ||
        std::find(offered_.begin(), offered_.end(), address) != offered_.end())
        return;
    offered_.push_back(address);
    downloadFileAtURL(url);
}

void WebBrowserViewController::webViewDidStartLoad(UIWebView&) {
    if (!navigationItem().rightBarButtonItem())
        navigationItem().setRightBarButtonItem(activityItem_, true);
    replaceItemWithTagWithItem(*toolbar_, kReloadTag, stopButton_);
    updateHistoryButtons();
}

void WebBrowserViewController::webViewDidFinishLoad(UIWebView& webView) {
    webView.stringByEvaluatingJavaScriptFromString(kSameFrameScript);
    loadEnded();
}

void WebBrowserViewController::webViewDidFailLoadWithError(UIWebView&, const NSError& error) {
    UIApplication::sharedApplication().setNetworkActivityIndicatorVisible(false);
    loadEnded();
    NSLog(error.localizedDescription());
    showNotice(error);
}

void WebBrowserViewController::showNotice(const NSError& error) {
    const auto url = webView_->request().URL();
    if (!url)
        return;
    if (error.domain() == NSURLErrorDomain &&
        error.code() == NSURLErrorServerCertificateUntrusted) {
        const PageNotice notice{
            NSLocalizedString("This Connection Is Not Secure"),
            NSLocalizedString("The certificate is not valid. Nothing was sent."),
            {}};
        webView_->showNotice(notice.html(*url), *url);
    } else if (error.domain() == WebKitErrorDomain &&
               error.code() == WebKitErrorWebContentProcessTerminated) {
        const PageNotice notice{
            NSLocalizedString("The Page Has Stopped"),
            NSLocalizedString("Something went wrong while this page was shown."),
            NSLocalizedString("Load Again")};
        webView_->showNotice(notice.html(*url), *url);
    }
}

void WebBrowserViewController::loadEnded() {
    if (navigationItem().rightBarButtonItem() == activityItem_)
        navigationItem().setRightBarButtonItem(nullptr, true);
    replaceItemWithTagWithItem(*toolbar_, kReloadTag, refreshButton_);
    updateHistoryButtons();
}

void WebBrowserViewController::updateHistoryButtons() {
    if (!webView_ || !backButton_)
        return;
    backButton_->setEnabled(webView_->canGoBack());
    forwardButton_->setEnabled(webView_->canGoForward());
}

}
