#pragma once
#include "platform/host/WebEngine.h"
#include "platform/linux/NativeReference.h"
#include "platform/linux/web/WebEngineSetup.h"
#include "platform/linux/web/WebKitSession.h"

#include <webkit/webkit.h>

#include <memory>

namespace vistrel {

/// The page engine and its sessions, each made when first needed. Pages run in the engine's
/// sandbox.
class WebKitEngine : public host::WebEngine, public std::enable_shared_from_this<WebKitEngine> {
public:
    explicit WebKitEngine(const WebEngineSetup& setup);

    std::shared_ptr<host::WebPage> createPage(host::WebSession kind) override;
    /// Session first, then a spare view, then that view's web process, each in an idle turn.
    void warmUp() override;

private:
    WebKitSession& session(host::WebSession kind);
    void warmUpLater();
    void warmUpStep();

    WebEngineSetup setup_;
    std::unique_ptr<WebKitSession> browsing_;
    std::unique_ptr<WebKitSession> guest_;
    NativeReference<WebKitWebView> spare_;
    bool warmingUp_ = false;
    bool spareStarted_ = false;
};

}
