#include "web/WebBrowserViewController.h"

#include "platform/foundation/NSError.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSURLConnection.h"
#include "platform/foundation/NSURLRequest.h"
#include "platform/foundation/NSURLResponse.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIActivityIndicatorView.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIBarButtonItem.h"
#include "platform/uikit/UINavigationBar.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UIToolbar.h"
#include "platform/uikit/UIWebView.h"
#include "platform/uikit/UIWindow.h"
#include "web/FileDownloadViewController.h"
#include "web/UIToolbarAdditions.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vistrel {

namespace {

constexpr int kForwardTag = 1;
constexpr int kBackTag = 2;
constexpr int kReloadTag = 3;

constexpr std::array<const char*, 3> kDownloadableMIMETypes{"video/mp4", "video/m4v", "audio/mpeg"};

/// Keeps pages from opening windows that the phone does not have.
constexpr const char* kSameFrameScript = "{ var a = document.getElementsByTagName(\"a\"); for (var "
                                         "i=0; i<a.length; i++) a[i].target = \"_self\"; }";

}

bool isDownloadableMIMEType(const std::string& mimeType) {
    return std::any_of(kDownloadableMIMETypes.begin(), kDownloadableMIMETypes.end(),
                       [&mimeType](const char* type) { return mimeType == type; });
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

WebBrowserViewController::~WebBrowserViewController() {
    if (webView_)
        webView_->setDelegate(nullptr);
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
    if (webView_)
        webView_->goBack();
}

void WebBrowserViewController::forwardAction() {
    if (webView_)
        webView_->goForward();
}

void WebBrowserViewController::refreshAction() {
    if (webView_)
        webView_->reload();
}

void WebBrowserViewController::stopAction() {
    if (webView_)
        webView_->stopLoading();
}

void WebBrowserViewController::homeAction() {
    openURL(URL_);
}

void WebBrowserViewController::viewDidLoad() {
    UIViewController::viewDidLoad();
    navigationItem().setTitle(navigationBarTitle_);
    const CGSize size = view()->frame().size;

    webView_ = std::make_shared<UIWebView>(CGRectMake(0, 0, size.width, size.height - 88));
    webView_->setDelegate(this);
    webView_->setScalesPageToFit(true);
    view()->addSubview(webView_);
    openURL(URL_);

    auto activity = std::make_shared<UIActivityIndicatorView>(UIActivityIndicatorViewStyle::White);
    activity->startAnimating();
    activityItem_ = UIBarButtonItem::withCustomView(activity);

    makeToolbarItems();
    toolbar_->setFrame(CGRectMake(0, size.height - 44, size.width, 44));
    view()->addSubview(toolbar_);
}

void WebBrowserViewController::makeToolbarItems() {
    const auto imageItem = [this](const char* image, const char* label, int tag,
                                  void (WebBrowserViewController::*action)()) {
        auto item =
            UIBarButtonItem::withImage(UIImage::imageNamed(image), UIBarButtonItemStyle::Plain,
                                       [this, action] { (this->*action)(); });
        item->setTag(tag);
        item->setAccessibilityLabel(label);
        return item;
    };
    const auto systemItem = [this](UIBarButtonSystemItem system,
                                   void (WebBrowserViewController::*action)()) {
        auto item =
            UIBarButtonItem::withBarButtonSystemItem(system, [this, action] { (this->*action)(); });
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

void WebBrowserViewController::viewWillDisappear(bool animated) {
    UIViewController::viewWillDisappear(animated);
    if (view()->window())
        view()->window()->makeKeyWindow();
    if (webView_) {
        webView_->stopLoading();
        webView_->setDelegate(nullptr);
    }
    UIApplication::sharedApplication().setNetworkActivityIndicatorVisible(false);
}

void WebBrowserViewController::viewDidUnload() {
    if (webView_)
        webView_->setDelegate(nullptr);
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

bool WebBrowserViewController::webViewShouldStartLoadWithRequest(UIWebView&,
                                                                 const NSURLRequest& request,
                                                                 UIWebViewNavigationType) {
    updateHistoryButtons();
    if (request.isSafeToRepeat() && request.URL() && request.URL()->isHTTP()) {
        NSURLRequest probe = request;
        // A site that renews its session with each visit must not be confused by a second visitor.
        probe.setCookies(NSURLRequestCookies::SendOnly);
        NSURLConnection::withRequestDelegate(std::move(probe), asConnectionDelegate());
    }
    return !download_;
}

bool WebBrowserViewController::webViewShouldShowResponseForUnrepeatableRequest(
    UIWebView&, const NSURLResponse& response) {
    if (!isDownloadableMIMEType(response.MIMEType()))
        return true;
    downloadFileAtURL(response.URL());
    return false;
}

void WebBrowserViewController::connectionDidReceiveResponse(NSURLConnection& connection,
                                                            const NSURLResponse& response) {
    if (isDownloadableMIMEType(response.MIMEType())) {
        const auto self = shared_from_this();
        connection.cancel();
        downloadFileAtURL(response.URL());
    } else if (download_) {
        download_ = false;
        openURL(response.URL());
    }
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

std::shared_ptr<NSURLConnectionDelegate> WebBrowserViewController::asConnectionDelegate() {
    return std::static_pointer_cast<WebBrowserViewController>(shared_from_this());
}

}
