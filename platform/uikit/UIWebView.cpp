#include "platform/uikit/UIWebView.h"

#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSError.h"
#include "platform/foundation/NSURLResponse.h"
#include "platform/host/EventLoop.h"
#include "platform/host/Host.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UIWebEngineValues.h"
#include "platform/uikit/UIWebLogin.h"

#include <algorithm>
#include <utility>

namespace vistrel {

namespace {

constexpr double kSmallestZoom = 0.5;
constexpr double kLargestZoom = 3;

bool isLoadable(const NSURL& url) {
    if (url.isHTTP())
        return true;
    std::string scheme = url.scheme();
    std::transform(scheme.begin(), scheme.end(), scheme.begin(),
                   [](unsigned char c) { return static_cast<char>(c | 0x20); });
    return scheme == "about";
}

}

UIWebView::UIWebView(CGRect frame, UIWebViewSession session)
    : UIView(frame)
    , session_(session) {
    UIView::setOpaque(true);
}

UIWebView::~UIWebView() {
    if (page_)
        page_->setClient(nullptr);
}

void UIWebView::prepareEngine() {
    host::current().webEngine->warmUp();
}

host::WebPage* UIWebView::page() {
    if (page_)
        return page_.get();
    page_ = host::current().webEngine->createPage(
        session_ == UIWebViewSession::Guest ? host::WebSession::Guest : host::WebSession::Browsing);
    if (!page_) {
        sayThatPagesAreMissing();
        return nullptr;
    }
    page_->setClient(this);
    page_->setScalesPageToFit(scalesPageToFit_);
    page_->setZoom(pageZoom_);
    page_->setTransparentBackground(!isOpaque());
    page_->setMediaPlaybackRequiresUserAction(mediaNeedsTouch_);
    return page_.get();
}

/// An ad is left out without a word.
void UIWebView::sayThatPagesAreMissing() {
    if (session_ == UIWebViewSession::Guest || !subviews().empty())
        return;
    const auto label = std::make_shared<UILabel>(bounds());
    label->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    label->setBackgroundColor(UIColor::blackColor());
    label->setTextColor(UIColor::whiteColor());
    label->setTextAlignment(UITextAlignment::Center);
    label->setText(NSLocalizedString("A part of Vistrel is not installed."));
    addSubview(label);
}

void UIWebView::setDelegate(std::weak_ptr<UIWebViewDelegate> delegate) {
    delegate_ = std::move(delegate);
}

void UIWebView::loadRequest(const NSURLRequest& request) {
    const auto& url = request.URL();
    if (!url || !isLoadable(*url) || request.HTTPMethod() != "GET")
        return;
    if (host::WebPage* loaded = page()) {
        loaded->load(url->absoluteString(), request.allHTTPHeaderFields());
        setNeedsComposition();
    }
}

void UIWebView::loadHTMLStringBaseURL(const std::string& html,
                                      const std::optional<NSURL>& baseURL) {
    if (host::WebPage* loaded = page()) {
        loaded->loadHTML(html, baseURL ? baseURL->absoluteString() : std::string());
        setNeedsComposition();
    }
}

void UIWebView::showNotice(const std::string& html, const NSURL& url) {
    if (host::WebPage* shown = page()) {
        shown->showNotice(html, url.absoluteString());
        setNeedsComposition();
    }
}

void UIWebView::goBack() {
    if (page_)
        page_->goBack();
}

void UIWebView::goForward() {
    if (page_)
        page_->goForward();
}

void UIWebView::reload() {
    if (page_)
        page_->reload();
}

void UIWebView::stopLoading() {
    if (page_)
        page_->stopLoading();
}

bool UIWebView::canGoBack() const {
    return page_ && page_->canGoBack();
}

bool UIWebView::canGoForward() const {
    return page_ && page_->canGoForward();
}

NSURLRequest UIWebView::request() const {
    return NSURLRequest(addressOf(URLString()));
}

std::string UIWebView::URLString() const {
    return page_ ? page_->url() : std::string();
}

void UIWebView::setScalesPageToFit(bool scales) {
    scalesPageToFit_ = scales;
    if (page_)
        page_->setScalesPageToFit(scales);
}

void UIWebView::setPageZoom(double zoom) {
    pageZoom_ = std::clamp(zoom, kSmallestZoom, kLargestZoom);
    if (page_)
        page_->setZoom(pageZoom_);
}

void UIWebView::setMediaPlaybackRequiresUserAction(bool needed) {
    mediaNeedsTouch_ = needed;
    if (page_)
        page_->setMediaPlaybackRequiresUserAction(needed);
}

void UIWebView::stringByEvaluatingJavaScriptFromString(
    const std::string& script, std::function<void(const std::string&)> done) {
    if (host::WebPage* loaded = page())
        loaded->evaluate(
            script, done ? std::move(done) : [](const std::string&) {});
    else if (done)
        host::current().loop->schedule(
            0, [done = std::move(done)] { done({}); });
}

std::string UIWebView::userAgent() {
    host::WebPage* asked = page();
    return asked ? asked->userAgent() : std::string();
}

void UIWebView::setOpaque(bool opaque) {
    UIView::setOpaque(opaque);
    if (page_)
        page_->setTransparentBackground(!opaque);
}

host::ForeignContent* UIWebView::foreignContent() {
    return page_.get();
}

UIAccessibilityElement UIWebView::accessibilityElement() const {
    return {UIAccessibilityRole::WebPage, page_ ? page_->title() : std::string(), URLString(),
            true};
}

NSURLRequest UIWebView::requestOf(const host::WebNavigation& navigation) const {
    NSURLRequest request(addressOf(navigation.url));
    request.setHTTPMethod(navigation.method);
    request.setMainDocumentURL(addressOf(navigation.mainDocumentURL));
    for (const auto& [field, value] : navigation.headers)
        request.setValueForHTTPHeaderField(value, field);
    if (request.valueForHTTPHeaderField("User-Agent").empty())
        request.setValueForHTTPHeaderField(page_->userAgent(), "User-Agent");
    return request;
}

bool UIWebView::webPageShouldNavigate(const host::WebNavigation& navigation) {
    const auto hold = weak_from_this().lock();
    const auto asked = delegate();
    return !asked ||
           asked->webViewShouldStartNavigation(*this, requestOf(navigation),
                                               {navigationTypeOf(navigation.type),
                                                navigation.isRedirect, navigation.isSameDocument});
}

bool UIWebView::webPageShouldShowResponse(const host::WebResponse& response) {
    const auto hold = weak_from_this().lock();
    const auto asked = delegate();
    const auto url = addressOf(response.url);
    return !asked || !url || asked->webViewShouldShowResponse(*this, responseOf(*url, response));
}

void UIWebView::webPageNeedsCredential(
    const host::WebChallenge& challenge,
    std::function<void(std::optional<host::WebCredential>)> answer) {
    // An untrusted page must not ask for a password.
    if (session_ == UIWebViewSession::Guest)
        answer({});
    else
        UIWebLogin::answer(challenge, std::move(answer));
}

void UIWebView::webPageDidStartLoad() {
    const auto hold = weak_from_this().lock();
    loading_ = true;
    if (const auto told = delegate())
        told->webViewDidStartLoad(*this);
}

void UIWebView::webPageDidFinishLoad() {
    const auto hold = weak_from_this().lock();
    loading_ = false;
    if (const auto told = delegate())
        told->webViewDidFinishLoad(*this);
}

void UIWebView::webPageDidFailLoad(const host::WebError& error) {
    const auto hold = weak_from_this().lock();
    loading_ = false;
    if (const auto told = delegate())
        told->webViewDidFailLoadWithError(
            *this, NSError(error.code < 0 ? NSURLErrorDomain : WebKitErrorDomain, error.code,
                           error.message));
}

}
