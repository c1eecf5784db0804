#pragma once
#include "platform/linux/NativeCallback.h"
#include "platform/linux/NativeReference.h"
#include "platform/linux/web/CookieExchange.h"
#include "platform/linux/web/WebEngineSetup.h"

#include <webkit/webkit.h>

#include <memory>

namespace vistrel {

/// A network session of the engine with its settings, and the views made with them.
class WebKitSession {
public:
    /// The user's: cookies and site data on disk, cookies shared with the application.
    static std::unique_ptr<WebKitSession> browsing(const WebEngineSetup& setup);
    /// For pages of strangers: in memory, with nothing to share.
    static std::unique_ptr<WebKitSession> guest();

    NativeReference<WebKitWebView> makeView() const;
    /// Null for a guest.
    const std::shared_ptr<CookieExchange>& cookies() const { return cookies_; }

private:
    explicit WebKitSession(NativeReference<WebKitNetworkSession> session);

    NativeReference<WebKitNetworkSession> session_;
    NativeReference<WebKitSettings> settings_;
    std::shared_ptr<CookieExchange> cookies_;
    SignalConnection downloadStarted_;
};

}
