#pragma once
#include "platform/host/WebEngine.h"
#include "platform/linux/NativeReference.h"
#include "platform/linux/web/CookieExchange.h"
#include "platform/linux/web/WebEngineSetup.h"

#include <webkit/webkit.h>

#include <memory>

namespace vistrel {

/// The page engine: one network session with its cookies and site data on disk, one set of
/// settings, and the pages made with them. Pages run in the engine's sandbox.
class WebKitEngine : public host::WebEngine {
public:
    explicit WebKitEngine(const WebEngineSetup& setup);
    ~WebKitEngine() override;

    std::unique_ptr<host::WebPage> createPage() override;
    /// Session first, then a spare view, then that view's web process, each in an idle turn.
    void warmUp() override;

private:
    void prepareSession();
    NativeReference<WebKitWebView> makeView();
    bool warmUpStep();

    WebEngineSetup setup_;
    NativeReference<WebKitNetworkSession> session_;
    NativeReference<WebKitSettings> settings_;
    std::shared_ptr<CookieExchange> cookies_;
    NativeReference<WebKitWebView> spare_;
    guint warmUpSource_ = 0;
    bool spareStarted_ = false;
};

}
