#pragma once
#include "platform/host/WebEngine.h"
#include "platform/linux/NativeReference.h"
#include "platform/linux/web/CookieExchange.h"
#include "platform/linux/window/GtkForeignContent.h"

#include <webkit/webkit.h>

#include <functional>
#include <memory>
#include <string>

namespace vistrel {

/// One web view of the engine, a child widget of the screen. Every navigation is held until the
/// application's cookies for its address are up to date with the engine's, then the client is
/// asked: a probe that the client starts from there carries what the page's own request will. About
/// a load of the application's own the client is asked before the engine, whose process starts
/// meanwhile.
class WebKitPage : public host::WebPage, public GtkForeignContent {
public:
    /// `cookies` may be null.
    WebKitPage(NativeReference<WebKitWebView> view, std::shared_ptr<CookieExchange> cookies);
    ~WebKitPage() override;
    WebKitPage(const WebKitPage&) = delete;
    WebKitPage& operator=(const WebKitPage&) = delete;

    void setClient(host::WebPageClient* client) override { client_ = client; }
    void load(const std::string& url, const host::HeaderFields& headers) override;
    void loadHTML(const std::string& html, const std::string& baseURL) override;
    void goBack() override;
    void goForward() override;
    void reload() override;
    void stopLoading() override;
    bool canGoBack() const override;
    bool canGoForward() const override;
    std::string url() const override;
    std::string title() const override;
    void evaluate(const std::string& script, std::function<void(const std::string&)> done) override;
    void setScalesPageToFit(bool scales) override;
    void setTransparentBackground(bool transparent) override;
    std::string userAgent() const override;

    GtkWidget* widget() override;
    double unitsPerPoint(double pixelsPerPoint) override;

private:
    using Weak = std::weak_ptr<WebKitPage*>;
    struct Handlers;

    /// Null when it is gone.
    static WebKitPage* pageOf(const Weak& weak);
    void startProcess();
    void answerLoad(WebKitURIRequest* request);
    bool isWanted(const host::WebNavigation& navigation);
    bool decidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
    void decideNavigation(WebKitNavigationPolicyDecision* decision);
    void answerNavigation(const host::WebNavigation& navigation, WebKitPolicyDecision* decision);
    void decideNewWindow(WebKitNavigationPolicyDecision* decision);
    void decideResponse(WebKitResponsePolicyDecision* decision);
    void loadChanged(WebKitLoadEvent event);
    void loadFailed(const char* url, const GError& error);
    void webProcessTerminated();
    void failLoad(const host::WebError& error);
    void fitToWidth();
    void fitTo(const std::string& measured);
    void measureAgain();
    void applyZoom();

    NativeReference<WebKitWebView> view_;
    std::shared_ptr<CookieExchange> cookies_;
    NativeReference<GCancellable> cancellable_;
    std::shared_ptr<WebKitPage*> self_;
    host::WebPageClient* client_ = nullptr;
    unsigned loads_ = 0;    ///< asked for or called off
    std::string wantedURL_; ///< the client has been asked; the engine is still to ask
    bool loading_ = false;
    bool scalesPageToFit_ = false;
    double pixelsPerPoint_ = 1;
    double fit_ = 1;
    int measuresLeft_ = 0; ///< of the width, for this load
};

}
