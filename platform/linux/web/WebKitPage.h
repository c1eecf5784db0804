#pragma once
#include "platform/host/WebEngine.h"
#include "platform/linux/NativeCallback.h"
#include "platform/linux/NativeReference.h"
#include "platform/linux/web/CookieExchange.h"
#include "platform/linux/web/PageFit.h"
#include "platform/linux/window/GtkForeignContent.h"

#include <webkit/webkit.h>

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace vistrel {
class WebKitPolicyAnswer;

/// One web view of the engine, a child widget of the screen. Every navigation is held until the
/// application's cookies for its address are up to date with the engine's, then the client is
/// asked: a probe that the client starts from there carries what the page's own request will. About
/// the application's own loads the client is asked before the engine, whose process starts
/// meanwhile.
class WebKitPage : public host::WebPage,
                   public GtkForeignContent,
                   public std::enable_shared_from_this<WebKitPage> {
public:
    /// `cookies` may be null.
    static std::shared_ptr<WebKitPage> with(NativeReference<WebKitWebView> view,
                                            std::shared_ptr<CookieExchange> cookies);
    ~WebKitPage() override;
    WebKitPage(const WebKitPage&) = delete;
    WebKitPage& operator=(const WebKitPage&) = delete;

    void setClient(host::WebPageClient* client) override { client_ = client; }
    void load(const std::string& url, const host::HeaderFields& headers) override;
    void loadHTML(const std::string& html, const std::string& baseURL) override;
    void showNotice(const std::string& html, const std::string& url) override;
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
    void setZoom(double zoom) override;
    void setTransparentBackground(bool transparent) override;
    void setMediaPlaybackRequiresUserAction(bool needed) override;
    std::string userAgent() const override;

    GtkWidget* widget() override;
    double unitsPerPoint(double pixelsPerPoint) override;

private:
    WebKitPage(NativeReference<WebKitWebView> view, std::shared_ptr<CookieExchange> cookies);

    void connect();
    host::WebNavigation completed(host::WebNavigation navigation) const;
    bool isInLoadedDocument(const host::WebNavigation& navigation) const;
    bool isWanted(const host::WebNavigation& navigation);
    void answerLoad(WebKitURIRequest* request);
    bool decidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
    void decideNavigation(WebKitNavigationAction* action,
                          const std::shared_ptr<WebKitPolicyAnswer>& answer);
    void answerNavigation(const host::WebNavigation& navigation, WebKitPolicyAnswer& answer);
    void openInThisPage(WebKitNavigationAction* action);
    void decideResponse(WebKitResponsePolicyDecision* decision, WebKitPolicyAnswer& answer);
    bool authenticate(WebKitAuthenticationRequest* request);
    void loadChanged(WebKitLoadEvent event);
    void failLoad(const host::WebError& error);

    NativeReference<WebKitWebView> view_;
    std::shared_ptr<CookieExchange> cookies_;
    NativeReference<GCancellable> cancellable_;
    std::shared_ptr<PageFit> fit_;
    std::vector<SignalConnection> connections_;
    host::WebPageClient* client_ = nullptr;
    unsigned loads_ = 0;    ///< asked for or called off
    std::string wantedURL_; ///< the client has been asked; the engine is still to ask
    /// Of the page and its frames, without fragments.
    std::set<std::string> documents_;
    bool loading_ = false;
    bool stopped_ = false; ///< the load that began last
    bool mediaNeedsTouch_ = false;
};

}
