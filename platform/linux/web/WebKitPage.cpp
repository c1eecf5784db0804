#include "platform/linux/web/WebKitPage.h"

#include "platform/linux/web/WebKitPageHandlers.h"
#include "platform/linux/web/WebKitPolicy.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace vistrel {

namespace {

/// The phone lays a page that says nothing of its width out at most this wide.
constexpr double kWidestLayout = 980;

/// What the engine asks for when it loads a page.
constexpr const char* kAccept = "text/html,application/xhtml+xml,application/xml;q=0.9,*/*;q=0.8";

/// How wide the page wants to be, and how wide it is shown, both in its own pixels.
constexpr const char* kWidthScript =
    "(function(){var d=document.documentElement,b=document.body;"
    "return Math.max(d?d.scrollWidth:0,b?b.scrollWidth:0)+' '+window.innerWidth;})()";
/// A page that has loaded before it has its place is measured again when it may have it.
constexpr guint kMeasureAgainMilliseconds = 50;
constexpr int kMeasures = 100;

struct Evaluation {
    std::function<void(const std::string&)> done;
};

void evaluated(GObject* view, GAsyncResult* result, gpointer data) {
    std::unique_ptr<Evaluation> evaluation(static_cast<Evaluation*>(data));
    auto value = NativeReference<JSCValue>::adopt(
        webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(view), result, nullptr));
    std::string text;
    if (value && !jsc_value_is_undefined(value.get()) && !jsc_value_is_null(value.get())) {
        char* copy = jsc_value_to_string(value.get());
        text = copy ? copy : "";
        g_free(copy);
    }
    if (evaluation->done)
        evaluation->done(text);
}

}

WebKitPage* WebKitPage::pageOf(const Weak& weak) {
    // Not held: a page may go while it works, and finds that out by its own reference.
    const auto self = weak.lock();
    return self ? *self : nullptr;
}

WebKitPage::WebKitPage(NativeReference<WebKitWebView> view, std::shared_ptr<CookieExchange> cookies)
    : view_(std::move(view))
    , cookies_(std::move(cookies))
    , cancellable_(NativeReference<GCancellable>::adopt(g_cancellable_new()))
    , self_(std::make_shared<WebKitPage*>(this)) {
    Handlers::connect(*this);
}

WebKitPage::~WebKitPage() {
    g_signal_handlers_disconnect_by_data(view_.get(), this);
    g_cancellable_cancel(cancellable_.get());
    webkit_web_view_stop_loading(view_.get());
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
    startProcess();
    cookies_->refresh(webkit_uri_request_get_uri(request.get()),
                      [weak = Weak(self_), thisLoad, request] {
                          WebKitPage* page = pageOf(weak);
                          if (page && page->loads_ == thisLoad)
                              page->answerLoad(request.get());
                      });
}

void WebKitPage::startProcess() {
    // An empty script does it, and leaves nothing in the history.
    webkit_web_view_evaluate_javascript(view_.get(), "", -1, nullptr, nullptr, nullptr, nullptr,
                                        nullptr);
}

void WebKitPage::answerLoad(WebKitURIRequest* request) {
    host::WebNavigation navigation = WebKitPolicy::navigation(request);
    navigation.headers.insert(navigation.headers.begin(),
                              {{"User-Agent", userAgent()}, {"Accept", kAccept}});
    if (!isWanted(navigation))
        return;
    wantedURL_ = navigation.url;
    webkit_web_view_load_request(view_.get(), request);
}

void WebKitPage::loadHTML(const std::string& html, const std::string& baseURL) {
    webkit_web_view_load_html(view_.get(), html.c_str(),
                              baseURL.empty() ? nullptr : baseURL.c_str());
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
    webkit_web_view_evaluate_javascript(
        view_.get(), script.data(), static_cast<gssize>(script.size()), nullptr, nullptr,
        cancellable_.get(), evaluated, new Evaluation{std::move(done)});
}

void WebKitPage::setScalesPageToFit(bool scales) {
    scalesPageToFit_ = scales;
    if (!scales) {
        fit_ = 1;
        applyZoom();
    }
}

void WebKitPage::setTransparentBackground(bool transparent) {
    const GdkRGBA colour = transparent ? GdkRGBA{0, 0, 0, 0} : GdkRGBA{1, 1, 1, 1};
    webkit_web_view_set_background_color(view_.get(), &colour);
}

std::string WebKitPage::userAgent() const {
    const char* agent = webkit_settings_get_user_agent(webkit_web_view_get_settings(view_.get()));
    return agent ? agent : "";
}

GtkWidget* WebKitPage::widget() {
    return GTK_WIDGET(view_.get());
}

double WebKitPage::unitsPerPoint(double pixelsPerPoint) {
    if (pixelsPerPoint != pixelsPerPoint_) {
        pixelsPerPoint_ = pixelsPerPoint;
        applyZoom();
    }
    return pixelsPerPoint_;
}

void WebKitPage::fitToWidth() {
    --measuresLeft_;
    evaluate(kWidthScript, [weak = Weak(self_)](const std::string& answer) {
        if (WebKitPage* page = pageOf(weak))
            page->fitTo(answer);
    });
}

void WebKitPage::fitTo(const std::string& measured) {
    char* end = nullptr;
    const double wanted = std::strtod(measured.c_str(), &end);
    const double shown = std::strtod(end, nullptr);
    const double place = gtk_widget_get_width(widget()) / (pixelsPerPoint_ * fit_);
    // The page hears of its place later than the widget.
    if (place <= 1 || std::abs(shown - place) > std::max(2.0, place / 100)) {
        measureAgain();
        return;
    }
    const double ratio = wanted / shown;
    if (!(ratio > 1.01))
        return;
    fit_ = std::min(1.0, std::max(fit_ / ratio, place * fit_ / kWidestLayout));
    applyZoom();
}

void WebKitPage::measureAgain() {
    if (measuresLeft_ <= 0)
        return;
    g_timeout_add_full(
        G_PRIORITY_DEFAULT, kMeasureAgainMilliseconds,
        +[](gpointer weak) -> gboolean {
            if (WebKitPage* page = pageOf(*static_cast<Weak*>(weak)))
                page->fitToWidth();
            return G_SOURCE_REMOVE;
        },
        new Weak(self_), +[](gpointer weak) { delete static_cast<Weak*>(weak); });
}

void WebKitPage::applyZoom() {
    webkit_web_view_set_zoom_level(view_.get(), pixelsPerPoint_ * fit_);
}

bool WebKitPage::decidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
    switch (type) {
    case WEBKIT_POLICY_DECISION_TYPE_NAVIGATION_ACTION:
        decideNavigation(WEBKIT_NAVIGATION_POLICY_DECISION(decision));
        return true;
    case WEBKIT_POLICY_DECISION_TYPE_NEW_WINDOW_ACTION:
        decideNewWindow(WEBKIT_NAVIGATION_POLICY_DECISION(decision));
        return true;
    case WEBKIT_POLICY_DECISION_TYPE_RESPONSE:
        decideResponse(WEBKIT_RESPONSE_POLICY_DECISION(decision));
        return true;
    }
    return false;
}

void WebKitPage::decideNavigation(WebKitNavigationPolicyDecision* decision) {
    auto* policy = WEBKIT_POLICY_DECISION(decision);
    const host::WebNavigation navigation =
        WebKitPolicy::navigation(webkit_navigation_policy_decision_get_navigation_action(decision));
    if (navigation.url == wantedURL_ && navigation.type == host::WebNavigationType::Other &&
        !navigation.isRedirect) {
        wantedURL_.clear();
        webkit_policy_decision_use(policy);
        return;
    }
    if (!cookies_ || !WebKitPolicy::isHTTP(navigation.url)) {
        answerNavigation(navigation, policy);
        return;
    }
    auto held = NativeReference<WebKitPolicyDecision>::ref(policy);
    cookies_->refresh(navigation.url, [weak = Weak(self_), navigation, held] {
        if (WebKitPage* page = pageOf(weak))
            page->answerNavigation(navigation, held.get());
        else
            webkit_policy_decision_ignore(held.get());
    });
}

void WebKitPage::answerNavigation(const host::WebNavigation& navigation,
                                  WebKitPolicyDecision* decision) {
    if (isWanted(navigation))
        webkit_policy_decision_use(decision);
    else
        webkit_policy_decision_ignore(decision);
}

bool WebKitPage::isWanted(const host::WebNavigation& navigation) {
    const Weak weak(self_);
    // A scheme of the application's own is the client's to hear of, and never shown.
    const bool wanted = !client_ || client_->webPageShouldNavigate(navigation);
    return wanted && !weak.expired() && WebKitPolicy::isShowable(navigation.url);
}

void WebKitPage::decideNewWindow(WebKitNavigationPolicyDecision* decision) {
    WebKitURIRequest* request = webkit_navigation_action_get_request(
        webkit_navigation_policy_decision_get_navigation_action(decision));
    const char* method = webkit_uri_request_get_http_method(request);
    webkit_policy_decision_ignore(WEBKIT_POLICY_DECISION(decision));
    // One window: the page goes there itself, and is asked about it then. A form's body is not at
    // hand here, so a form that wants a new window is not sent.
    if (!method || !g_ascii_strcasecmp(method, "GET"))
        webkit_web_view_load_request(view_.get(), request);
}

void WebKitPage::decideResponse(WebKitResponsePolicyDecision* decision) {
    const Weak weak(self_);
    auto* policy = WEBKIT_POLICY_DECISION(decision);
    const bool wanted =
        !client_ || client_->webPageShouldShowResponse(WebKitPolicy::response(decision));
    if (wanted && !weak.expired() &&
        webkit_response_policy_decision_is_mime_type_supported(decision))
        webkit_policy_decision_use(policy);
    else
        webkit_policy_decision_ignore(policy);
}

void WebKitPage::loadChanged(WebKitLoadEvent event) {
    if (event == WEBKIT_LOAD_STARTED) {
        loading_ = true;
        wantedURL_.clear();
        measuresLeft_ = 0;
        if (client_)
            client_->webPageDidStartLoad();
    } else if (event == WEBKIT_LOAD_COMMITTED) {
        fit_ = 1;
        applyZoom();
    } else if (event == WEBKIT_LOAD_FINISHED) {
        measuresLeft_ = kMeasures;
        if (scalesPageToFit_)
            fitToWidth();
        if (std::exchange(loading_, false) && client_)
            client_->webPageDidFinishLoad();
    }
}

void WebKitPage::loadFailed(const char* url, const GError& error) {
    failLoad(WebKitPolicy::error(error, url ? url : ""));
}

void WebKitPage::webProcessTerminated() {
    // Also told when nothing was loading: the page is gone from the screen.
    loading_ = true;
    failLoad({-1, "The page ended unexpectedly.", url()});
}

void WebKitPage::failLoad(const host::WebError& error) {
    // The engine also reports what was refused before it began: nobody was told of a start.
    if (std::exchange(loading_, false) && client_)
        client_->webPageDidFailLoad(error);
}

}
