#include "web/WebBrowserViewController.h"

#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSError.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSURLConnection.h"
#include "platform/foundation/NSURLRequest.h"
#include "platform/foundation/NSURLResponse.h"
#include "platform/foundation/Weakly.h"
#include "platform/uikit/UIActivityIndicatorView.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIBarButtonItem.h"
#include "platform/uikit/UICommand.h"
#include "platform/uikit/UINavigationBar.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UIToolbar.h"
#include "platform/uikit/UIWebView.h"
#include "platform/uikit/UIWindow.h"
#include "settings/Manners.h"
#include "web/AddressPrompt.h"
#include "web/DownloadableMedia.h"
#include "web/FileDownloadViewController.h"
#include "web/FormResubmission.h"
#include "web/PageNotice.h"
#include "web/WebBrowserToolbar.h"

#include <algorithm>
#include <utility>

namespace vistrel {

namespace {

/// A page with many frames must not bury the browser under download screens.
constexpr std::size_t kMostOffers = 2;

/// Keeps pages from opening windows that the phone does not have.
constexpr const char* kSameFrameScript = "{ var a = document.getElementsByTagName(\"a\"); for (var "
                                         "i=0; i<a.length; i++) a[i].target = \"_self\"; }";

constexpr double kZoomStep = 1.2;

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

std::shared_ptr<UIToolbar> WebBrowserViewController::toolbar() const {
    return toolbar_ ? toolbar_->toolbar() : nullptr;
}

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

void WebBrowserViewController::backAction() {
    if (resubmission_)
        resubmission_->go(&UIWebView::goBack);
}

void WebBrowserViewController::forwardAction() {
    if (resubmission_)
        resubmission_->go(&UIWebView::goForward);
}

void WebBrowserViewController::refreshAction() {
    if (resubmission_)
        resubmission_->go(&UIWebView::reload);
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
    if (!addressPrompt_)
        addressPrompt_ = std::make_shared<AddressPrompt>(
            weakly(this, [](auto& browser, const NSURL& url) { browser.openURL(url); }));
    addressPrompt_->ask();
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
    resubmission_ = std::make_shared<FormResubmission>(webView_);
    view()->addSubview(webView_);
    openURL(URL_);

    auto activity = std::make_shared<UIActivityIndicatorView>(UIActivityIndicatorViewStyle::White);
    activity->startAnimating();
    activityItem_ = UIBarButtonItem::withCustomView(activity);

    addToolbar();
}

void WebBrowserViewController::addToolbar() {
    toolbar_ = std::make_unique<WebBrowserToolbar>(
        WebBrowserActions{.back = weakly(this, &WebBrowserViewController::backAction),
                          .forward = weakly(this, &WebBrowserViewController::forwardAction),
                          .refresh = weakly(this, &WebBrowserViewController::refreshAction),
                          .stop = weakly(this, &WebBrowserViewController::stopAction),
                          .home = weakly(this, &WebBrowserViewController::homeAction)});
    const CGSize size = view()->frame().size;
    toolbar()->setFrame(CGRectMake(0, size.height - kUIBarHeight, size.width, kUIBarHeight));
    if (navigationController())
        toolbar()->setTintColor(navigationController()->navigationBar()->tintColor());
    view()->addSubview(toolbar());
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
        resubmission_->forget();
    }
    UIApplication::sharedApplication().setNetworkActivityIndicatorVisible(false);
}

void WebBrowserViewController::viewDidUnload() {
    if (webView_)
        webView_->setDelegate({});
    webView_.reset();
    resubmission_.reset();
    toolbar_.reset();
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
    if (!resubmission_->permits(request, navigation.type))
        return false;
    visits_.begin(request, navigation.isRedirect, weakReference<NSURLConnectionDelegate>(this));
    return !download_;
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
    toolbar_->setLoading(true);
    updateHistoryButtons();
}

void WebBrowserViewController::webViewDidFinishLoad(UIWebView& webView) {
    webView.stringByEvaluatingJavaScriptFromString(kSameFrameScript);
    loadEnded();
}

void WebBrowserViewController::webViewDidFailLoadWithError(UIWebView& webView,
                                                           const NSError& error) {
    UIApplication::sharedApplication().setNetworkActivityIndicatorVisible(false);
    loadEnded();
    NSLog(error.localizedDescription());
    const auto notice = PageNotice::forError(error);
    const auto url = webView.request().URL();
    if (notice && url)
        webView.showNotice(notice->html(*url), *url);
}

void WebBrowserViewController::loadEnded() {
    if (navigationItem().rightBarButtonItem() == activityItem_)
        navigationItem().setRightBarButtonItem(nullptr, true);
    toolbar_->setLoading(false);
    resubmission_->forget();
    updateHistoryButtons();
}

void WebBrowserViewController::updateHistoryButtons() {
    if (webView_ && toolbar_)
        toolbar_->setHistory(webView_->canGoBack(), webView_->canGoForward());
}

}
