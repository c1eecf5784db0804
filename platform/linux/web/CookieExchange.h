#pragma once
#include "platform/linux/NativeCallback.h"
#include "platform/linux/NativeReference.h"

#include <libsoup/soup.h>
#include <webkit/webkit.h>

#include <functional>
#include <memory>
#include <string>

namespace vistrel {

/// Keeps the page engine's cookies and the application's cookie jar equal, both ways. The engine's
/// database is never opened here: cookies are copied through its cookie manager. Where the two
/// differ at the start, the jar's cookies win, because they are from this run.
class CookieExchange : public std::enable_shared_from_this<CookieExchange> {
public:
    static std::shared_ptr<CookieExchange> between(WebKitNetworkSession* session,
                                                   SoupCookieJar* jar);
    ~CookieExchange();
    CookieExchange(const CookieExchange&) = delete;
    CookieExchange& operator=(const CookieExchange&) = delete;

    /// Brings the jar's cookies for an address up to the engine's, then calls `done` (also after a
    /// failure, or when the engine does not answer in time). Not called once the exchange is gone.
    void refresh(const std::string& url, std::function<void()> done);

private:
    struct Wait;
    using FinishQuestion = GList* (*)(WebKitCookieManager*, GAsyncResult*, GError**);

    CookieExchange(WebKitNetworkSession* session, SoupCookieJar* jar);
    void begin();
    std::shared_ptr<Wait> wait(std::function<void(bool answered)> done) const;
    void refreshAll();
    void catchUp();
    /// `url` empty: about all cookies.
    std::function<void(GAsyncResult*)> received(FinishQuestion finish, const std::string& url,
                                                std::shared_ptr<Wait> asked);
    void jarChanged(SoupCookie* before, SoupCookie* after);
    void mirrorAnswer(GList* cookies, const std::string& url);
    void mirror(GList* engineCookies, GSList* jarCookies);

    NativeReference<WebKitNetworkSession> session_;
    WebKitCookieManager* manager_; ///< the session's
    NativeReference<SoupCookieJar> jar_;
    NativeReference<GCancellable> cancellable_;
    SignalConnection engineChanged_;
    SignalConnection jarChanged_;
    int pushesUnderWay_ = 0;
    bool applying_ = false; ///< the jar changes because the engine did
    bool refreshUnderWay_ = false;
    bool changedMeanwhile_ = false;
};

}
