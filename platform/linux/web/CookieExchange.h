#pragma once
#include "platform/linux/NativeReference.h"

#include <libsoup/soup.h>
#include <webkit/webkit.h>

#include <functional>
#include <memory>
#include <string>

namespace vistrel {

/// Keeps the page engine's cookies and the application's cookie jar equal, both ways. The engine's
/// own database is never opened here: cookies are copied through its cookie manager. Where both
/// sides differ at the start, the jar's cookies win, being of this run.
class CookieExchange {
public:
    CookieExchange(WebKitNetworkSession* session, SoupCookieJar* jar);
    ~CookieExchange();
    CookieExchange(const CookieExchange&) = delete;
    CookieExchange& operator=(const CookieExchange&) = delete;

    /// Brings the jar's cookies for an address up to the engine's, then calls `done` (also after a
    /// failure, or when the engine does not answer in time). Dropped when the exchange dies first.
    void refresh(const std::string& url, std::function<void()> done);

private:
    struct Request;
    /// What waits for the engine's answer; a second is enough for one, also a lost one.
    struct Wait;
    enum class Question { Address, All, Push };
    Request* request(Question question, std::string url = {}, std::function<void()> done = {});
    static void settle(Wait& wait);
    void refreshAll();
    void jarChanged(SoupCookie* before, SoupCookie* after);
    void pushToEngine(SoupCookie* cookie);
    void removeFromEngine(SoupCookie* cookie);
    /// `url` empty: all cookies of the engine.
    void mirrorAnswer(GList* cookies, const std::string& url);
    void mirror(GList* engineCookies, GSList* jarCookies);
    static void received(GObject* manager, GAsyncResult* result, gpointer data);
    static void pushed(GObject* manager, GAsyncResult* result, gpointer data);

    NativeReference<WebKitNetworkSession> session_;
    WebKitCookieManager* manager_; ///< the session's
    NativeReference<SoupCookieJar> jar_;
    NativeReference<GCancellable> cancellable_;
    std::shared_ptr<CookieExchange*> self_;
    int pushesUnderWay_ = 0;
    bool applying_ = false; ///< the jar changes because the engine did
    bool refreshUnderWay_ = false;
    bool changedMeanwhile_ = false;
};

}
