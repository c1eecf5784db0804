#include "platform/linux/web/WebKitPage.h"

#include "platform/foundation/Weakly.h"
#include "platform/linux/web/PageScripts.h"
#include "platform/linux/web/WebKitPolicy.h"
#include "platform/linux/web/WebKitPolicyAnswer.h"
#include "platform/linux/web/WebKitRefusals.h"

#include <algorithm>
#include <utility>

namespace vistrel {

namespace {

/// What the engine asks for when it loads a page.
constexpr const char* kAccept = "text/html,application/xhtml+xml,application/xml;q=0.9,*/*;q=0.8";

std::string withoutFragment(const std::string& url) {
    return url.substr(0, url.find('#'));
}

void addMissing(host::HeaderFields& headers, const char* name, const std::string& value) {
    const bool isThere = std::any_of(headers.begin(), headers.end(), [name](const auto& field) {
        return g_ascii_strcasecmp(field.first.c_str(), name) == 0;
    });
    if (!isThere && !value.empty())
        headers.emplace_back(name, value);
}

NativeReference<WebKitWebsitePolicies> policies(WebKitAutoplayPolicy autoplay) {
    return NativeReference<WebKitWebsitePolicies>::adopt(
        webkit_website_policies_new_with_policies("autoplay", autoplay, nullptr));
}

}

std::shared_ptr<WebKitPage> WebKitPage::with(NativeReference<WebKitWebView> view,
                                             std::shared_ptr<CookieExchange> cookies) {
    std::shared_ptr<WebKitPage> page(new WebKitPage(std::move(view), std::move(cookies)));
    page->connect();
    return page;
}

WebKitPage::WebKitPage(NativeReference<WebKitWebView> view, std::shared_ptr<CookieExchange> cookies)
    : view_(std::move(view))
    , cookies_(std::move(cookies))
    , cancellable_(NativeReference<GCancellable>::adopt(g_cancellable_new()))
    , fit_(std::make_shared<PageFit>(view_)) {}

WebKitPage::~WebKitPage() {
    connections_.clear();
    g_cancellable_cancel(cancellable_.get());
    webkit_web_view_stop_loading(view_.get());
    // An endless script would keep the process busy, and the engine's cache keep it idle.
    webkit_web_view_terminate_web_process(view_.get());
}

void WebKitPage::connect() {
    WebKitWebView* view = view_.get();
    connections_ = refuseExtras(view);
    const auto keep = [this](SignalConnection connection) {
        connections_.push_back(std::move(connection));
    };
    keep(connectSignal<gboolean(WebKitPolicyDecision*, WebKitPolicyDecisionType)>(
        view, "decide-policy", weakly(this, &WebKitPage::decidePolicy)));
    keep(connectSignal<GtkWidget*(WebKitNavigationAction*)>(
        view, "create", weakly(this, [](WebKitPage& self, WebKitNavigationAction* action) {
            self.openInThisPage(action);
            return static_cast<GtkWidget*>(nullptr);
        })));
    keep(connectSignal<gboolean(WebKitAuthenticationRequest*)>(
        view, "authenticate", weakly(this, &WebKitPage::authenticate)));
    keep(connectSignal<void(WebKitLoadEvent)>(view, "load-changed",
                                              weakly(this, &WebKitPage::loadChanged)));
    // True: no error page of the engine's.
    keep(connectSignal<gboolean(WebKitLoadEvent, const char*, GError*)>(
        view, "load-failed",
        weakly(this, [](WebKitPage& self, WebKitLoadEvent, const char* url, GError* error) {
            host::WebError failure = WebKitPolicy::error(*error, url ? url : "");
            // When stopped early, the engine may call it an interruption.
            if (self.stopped_)
                failure.code = WebKitPolicy::kErrorCancelled;
            self.failLoad(failure);
            return true;
        })));
    keep(connectSignal<gboolean(const char*, GTlsCertificate*, GTlsCertificateFlags)>(
        view, "load-failed-with-tls-errors",
        weakly(this, [](WebKitPage& self, const char* url, GTlsCertificate*, GTlsCertificateFlags) {
            self.failLoad({host::WebError::kCertificate, "The certificate is not valid.", url});
            return true;
        })));
    keep(connectSignal<void(WebKitWebProcessTerminationReason)>(
        view, "web-process-terminated",
        weakly(this, [](WebKitPage& self, WebKitWebProcessTerminationReason) {
            // Also when nothing was loading: the page is gone from the screen.
            self.loading_ = true;
            self.failLoad(
                {host::WebError::kProcessEnded, "The page ended unexpectedly.", self.url()});
        })));
    // Another screen lies over the page, or has gone from it.
    keep(connectSignal<void()>(
        view, "unmap",
        weakly(
            this, [](WebKitPage& self) { webkit_web_view_set_is_muted(self.view_.get(), TRUE); })));
    keep(connectSignal<void()>(view, "map", weakly(this, [](WebKitPage& self) {
                                   webkit_web_view_set_is_muted(self.view_.get(), FALSE);
                               })));
}

void WebKitPage::load(const std::string& url, const host::HeaderFields& headers) {
    auto request = NativeReference<WebKitURIRequest>::adopt(webkit_uri_request_new(url.c_str()));
    if (SoupMessageHeaders* fields = webkit_uri_request_get_http_headers(request.get()))
        for (const auto& [name, value] : headers)
            soup_message_headers_replace(fields, name.c_str(), value.c_str());
    wantedURL_.clear();
    const unsigned thisLoad = ++loads_;
    if (!cookies_ || !WebKitPolicy::isHTTP(url)) {
        webkit_web_view_load_request(view_.get(), request.get());
        return;
    }
    PageScripts::startProcess(view_.get());
    cookies_->refresh(webkit_uri_request_get_uri(request.get()),
                      weakly(this, [thisLoad, request](WebKitPage& self) {
                          if (self.loads_ == thisLoad)
                              self.answerLoad(request.get());
                      }));
}

void WebKitPage::answerLoad(WebKitURIRequest* request) {
    const host::WebNavigation navigation = completed(WebKitPolicy::navigation(request));
    if (!isWanted(navigation))
        return;
    wantedURL_ = navigation.url;
    webkit_web_view_load_request(view_.get(), request);
}

void WebKitPage::loadHTML(const std::string& html, const std::string& baseURL) {
    webkit_web_view_load_html(view_.get(), html.c_str(),
                              baseURL.empty() ? nullptr : baseURL.c_str());
}

void WebKitPage::showNotice(const std::string& html, const std::string& url) {
    wantedURL_ = url;
    webkit_web_view_load_alternate_html(view_.get(), html.c_str(), url.c_str(), nullptr);
}

void WebKitPage::goBack() {
    webkit_web_view_go_back(view_.get());
}

void WebKitPage::goForward() {
    webkit_web_view_go_forward(view_.get());
}

void WebKitPage::reload() {
    webkit_web_view_reload(view_.get());
}

void WebKitPage::stopLoading() {
    ++loads_;
    stopped_ = true;
    webkit_web_view_stop_loading(view_.get());
}

bool WebKitPage::canGoBack() const {
    return webkit_web_view_can_go_back(view_.get());
}

bool WebKitPage::canGoForward() const {
    return webkit_web_view_can_go_forward(view_.get());
}

std::string WebKitPage::url() const {
    const char* url = webkit_web_view_get_uri(view_.get());
    return url ? url : "";
}

std::string WebKitPage::title() const {
    const char* title = webkit_web_view_get_title(view_.get());
    return title ? title : "";
}

void WebKitPage::evaluate(const std::string& script, std::function<void(const std::string&)> done) {
    PageScripts::evaluate(view_.get(), script, cancellable_.get(),
                          weakly(
                              this,
                              [done = std::move(done)](WebKitPage&, const std::string& text) {
                                  if (done)
                                      done(text);
                              }));
}

void WebKitPage::setZoom(double zoom) {
    fit_->setZoom(zoom);
}

void WebKitPage::setScalesPageToFit(bool scales) {
    fit_->setEnabled(scales);
}

void WebKitPage::setTransparentBackground(bool transparent) {
    const GdkRGBA colour = transparent ? GdkRGBA{0, 0, 0, 0} : GdkRGBA{1, 1, 1, 1};
    webkit_web_view_set_background_color(view_.get(), &colour);
}

void WebKitPage::setMediaPlaybackRequiresUserAction(bool needed) {
    mediaNeedsTouch_ = needed;
}

std::string WebKitPage::userAgent() const {
    const char* agent = webkit_settings_get_user_agent(webkit_web_view_get_settings(view_.get()));
    return agent ? agent : "";
}

GtkWidget* WebKitPage::widget() {
    return GTK_WIDGET(view_.get());
}

double WebKitPage::unitsPerPoint(double pixelsPerPoint) {
    fit_->setPixelsPerPoint(pixelsPerPoint);
    return pixelsPerPoint;
}

host::WebNavigation WebKitPage::completed(host::WebNavigation navigation) const {
    addMissing(navigation.headers, "User-Agent", userAgent());
    addMissing(navigation.headers, "Accept", kAccept);
    return navigation;
}

bool WebKitPage::isInLoadedDocument(const host::WebNavigation& navigation) const {
    if (navigation.isRedirect || navigation.method != "GET" ||
        navigation.type == host::WebNavigationType::Reload ||
        navigation.url.find('#') == std::string::npos)
        return false;
    const std::string document = withoutFragment(navigation.url);
    return documents_.contains(document) || withoutFragment(url()) == document;
}

bool WebKitPage::isWanted(const host::WebNavigation& navigation) {
    if (!client_)
        return WebKitPolicy::isShowable(navigation.url);
    // The client hears of other schemes, but they are never shown. It may release the page while it
    // is asked.
    const bool wanted = client_->webPageShouldNavigate(navigation);
    return wanted && client_ && WebKitPolicy::isShowable(navigation.url);
}

bool WebKitPage::decidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
    const auto answer = std::make_shared<WebKitPolicyAnswer>(decision);
    if (type == WEBKIT_POLICY_DECISION_TYPE_RESPONSE) {
        decideResponse(WEBKIT_RESPONSE_POLICY_DECISION(decision), *answer);
        return true;
    }
    WebKitNavigationAction* action = webkit_navigation_policy_decision_get_navigation_action(
        WEBKIT_NAVIGATION_POLICY_DECISION(decision));
    if (type == WEBKIT_POLICY_DECISION_TYPE_NEW_WINDOW_ACTION)
        openInThisPage(action);
    else
        decideNavigation(action, answer);
    return true;
}

void WebKitPage::decideNavigation(WebKitNavigationAction* action,
                                  const std::shared_ptr<WebKitPolicyAnswer>& answer) {
    host::WebNavigation navigation = completed(WebKitPolicy::navigation(action));
    if (navigation.url == wantedURL_ && navigation.type == host::WebNavigationType::Other &&
        !navigation.isRedirect) {
        wantedURL_.clear();
        documents_.insert(withoutFragment(navigation.url));
        answer->allow();
        return;
    }
    navigation.mainDocumentURL = url();
    navigation.isSameDocument = isInLoadedDocument(navigation);
    if (!cookies_ || navigation.isSameDocument || !WebKitPolicy::isHTTP(navigation.url)) {
        answerNavigation(navigation, *answer);
        return;
    }
    cookies_->refresh(navigation.url, weakly(this, [navigation, answer](WebKitPage& self) {
                          self.answerNavigation(navigation, *answer);
                      }));
}

void WebKitPage::answerNavigation(const host::WebNavigation& navigation,
                                  WebKitPolicyAnswer& answer) {
    if (!isWanted(navigation))
        return;
    documents_.insert(withoutFragment(navigation.url));
    answer.allow(
        policies(mediaNeedsTouch_ ? WEBKIT_AUTOPLAY_DENY : WEBKIT_AUTOPLAY_ALLOW_WITHOUT_SOUND)
            .get());
}

void WebKitPage::openInThisPage(WebKitNavigationAction* action) {
    // Forms are kept in the page by a script, since their body is not at hand here.
    WebKitURIRequest* request = webkit_navigation_action_get_request(action);
    const host::WebNavigation navigation = WebKitPolicy::navigation(request);
    if (navigation.method == "GET" && !navigation.url.empty())
        webkit_web_view_load_request(view_.get(), request);
}

void WebKitPage::decideResponse(WebKitResponsePolicyDecision* decision,
                                WebKitPolicyAnswer& answer) {
    const bool wanted =
        !client_ || client_->webPageShouldShowResponse(WebKitPolicy::response(decision));
    if (wanted && webkit_response_policy_decision_is_mime_type_supported(decision))
        answer.allow();
}

bool WebKitPage::authenticate(WebKitAuthenticationRequest* request) {
    const auto challenge = WebKitPolicy::challenge(request);
    if (!challenge || !client_) {
        webkit_authentication_request_authenticate(request, nullptr);
        return true;
    }
    webkit_authentication_request_set_can_save_credentials(request, FALSE);
    const auto held = NativeReference<WebKitAuthenticationRequest>::ref(request);
    client_->webPageNeedsCredential(*challenge, [held](std::optional<host::WebCredential> given) {
        WebKitCredential* credential =
            given ? webkit_credential_new(given->user.c_str(), given->password.c_str(),
                                          WEBKIT_CREDENTIAL_PERSISTENCE_FOR_SESSION)
                  : nullptr;
        webkit_authentication_request_authenticate(held.get(), credential);
        if (credential)
            webkit_credential_free(credential);
    });
    return true;
}

void WebKitPage::loadChanged(WebKitLoadEvent event) {
    if (event == WEBKIT_LOAD_STARTED) {
        loading_ = true;
        stopped_ = false;
        fit_->loadStarted();
        if (client_)
            client_->webPageDidStartLoad();
    } else if (event == WEBKIT_LOAD_COMMITTED) {
        documents_ = {withoutFragment(url())};
        fit_->loadCommitted();
    } else if (event == WEBKIT_LOAD_FINISHED) {
        fit_->loadFinished();
        if (std::exchange(loading_, false) && client_)
            client_->webPageDidFinishLoad();
    }
}

void WebKitPage::failLoad(const host::WebError& error) {
    // The engine also reports what was refused before it began: nobody was told of a start.
    if (std::exchange(loading_, false) && client_)
        client_->webPageDidFailLoad(error);
}

}
