#include "platform/linux/web/CookieExchange.h"

#include <cstring>
#include <utility>

namespace vistrel {

namespace {

/// RFC 6265, 5.3: a cookie is known by name, domain and path.
bool isSameCookie(SoupCookie* a, SoupCookie* b) {
    return !std::strcmp(soup_cookie_get_name(a), soup_cookie_get_name(b)) &&
           !g_ascii_strcasecmp(soup_cookie_get_domain(a), soup_cookie_get_domain(b)) &&
           !std::strcmp(soup_cookie_get_path(a), soup_cookie_get_path(b));
}

bool hasSameExpiry(SoupCookie* a, SoupCookie* b) {
    GDateTime* first = soup_cookie_get_expires(a);
    GDateTime* second = soup_cookie_get_expires(b);
    if (!first || !second)
        return first == second;
    return g_date_time_to_unix(first) == g_date_time_to_unix(second);
}

bool hasSameContent(SoupCookie* a, SoupCookie* b) {
    return !std::strcmp(soup_cookie_get_value(a), soup_cookie_get_value(b)) &&
           hasSameExpiry(a, b) && soup_cookie_get_secure(a) == soup_cookie_get_secure(b) &&
           soup_cookie_get_http_only(a) == soup_cookie_get_http_only(b);
}

template <typename List>
SoupCookie* findCookie(List* list, SoupCookie* cookie) {
    for (; list; list = list->next)
        if (isSameCookie(static_cast<SoupCookie*>(list->data), cookie))
            return static_cast<SoupCookie*>(list->data);
    return nullptr;
}

void freeCookies(GSList* cookies) {
    g_slist_free_full(cookies, reinterpret_cast<GDestroyNotify>(soup_cookie_free));
}

void freeCookies(GList* cookies) {
    g_list_free_full(cookies, reinterpret_cast<GDestroyNotify>(soup_cookie_free));
}

}

/// One question or order to the engine; `url` empty: about all its cookies.
struct CookieExchange::Request {
    ~Request() {
        // The engine's task lets go of the cookie manager after its callback has returned, and the
        // manager must not outlive the session.
        g_idle_add_once([](gpointer held) { g_object_unref(held); }, g_object_ref(session.get()));
    }
    NativeReference<WebKitNetworkSession> session;
    std::weak_ptr<CookieExchange*> exchange;
    std::string url;
    std::function<void()> done;
};

CookieExchange::Request* CookieExchange::request(std::string url, std::function<void()> done) {
    return new Request{session_, self_, std::move(url), std::move(done)};
}

CookieExchange::CookieExchange(WebKitNetworkSession* session, SoupCookieJar* jar)
    : session_(NativeReference<WebKitNetworkSession>::ref(session))
    , manager_(webkit_network_session_get_cookie_manager(session))
    , jar_(NativeReference<SoupCookieJar>::ref(jar))
    , cancellable_(NativeReference<GCancellable>::adopt(g_cancellable_new()))
    , self_(std::make_shared<CookieExchange*>(this)) {
    g_signal_connect(manager_, "changed", G_CALLBACK(+[](WebKitCookieManager*, gpointer self) {
                         static_cast<CookieExchange*>(self)->refreshAll();
                     }),
                     this);
    g_signal_connect(
        jar, "changed",
        G_CALLBACK(+[](SoupCookieJar*, SoupCookie* before, SoupCookie* after, gpointer self) {
            static_cast<CookieExchange*>(self)->jarChanged(before, after);
        }),
        this);
    GSList* cookies = soup_cookie_jar_all_cookies(jar);
    for (GSList* entry = cookies; entry; entry = entry->next)
        pushToEngine(static_cast<SoupCookie*>(entry->data));
    freeCookies(cookies);
    refreshAll();
}

CookieExchange::~CookieExchange() {
    g_signal_handlers_disconnect_by_data(manager_, this);
    g_signal_handlers_disconnect_by_data(jar_.get(), this);
    g_cancellable_cancel(cancellable_.get());
}

void CookieExchange::refresh(const std::string& url, std::function<void()> done) {
    webkit_cookie_manager_get_cookies(manager_, url.c_str(), cancellable_.get(), received,
                                      request(url, std::move(done)));
}

void CookieExchange::refreshAll() {
    if (refreshUnderWay_) {
        changedMeanwhile_ = true;
        return;
    }
    refreshUnderWay_ = true;
    webkit_cookie_manager_get_all_cookies(manager_, cancellable_.get(), received, request());
}

void CookieExchange::received(GObject* manager, GAsyncResult* result, gpointer data) {
    std::unique_ptr<Request> request(static_cast<Request*>(data));
    GError* error = nullptr;
    const bool all = request->url.empty();
    GList* cookies = all ? webkit_cookie_manager_get_all_cookies_finish(
                               WEBKIT_COOKIE_MANAGER(manager), result, &error)
                         : webkit_cookie_manager_get_cookies_finish(WEBKIT_COOKIE_MANAGER(manager),
                                                                    result, &error);
    const bool failed = error != nullptr;
    g_clear_error(&error);
    if (auto self = request->exchange.lock()) {
        CookieExchange& exchange = **self;
        GUri* uri =
            all ? nullptr
                : g_uri_parse(request->url.c_str(), GUriFlags(SOUP_HTTP_URI_FLAGS), nullptr);
        if (!failed && (all || uri)) {
            GSList* known = all ? soup_cookie_jar_all_cookies(exchange.jar_.get())
                                : soup_cookie_jar_get_cookie_list(exchange.jar_.get(), uri, TRUE);
            exchange.mirror(cookies, known);
            freeCookies(known);
        }
        if (uri)
            g_uri_unref(uri);
        if (all) {
            exchange.refreshUnderWay_ = false;
            if (std::exchange(exchange.changedMeanwhile_, false))
                exchange.refreshAll();
        }
        if (request->done)
            request->done();
    }
    freeCookies(cookies);
}

void CookieExchange::mirror(GList* engineCookies, GSList* jarCookies) {
    // What is still on its way to the engine must not be taken for deleted, or be overwritten.
    if (pushesUnderWay_ > 0) {
        changedMeanwhile_ = true;
        return;
    }
    applying_ = true;
    for (GList* entry = engineCookies; entry; entry = entry->next) {
        auto* cookie = static_cast<SoupCookie*>(entry->data);
        SoupCookie* known = findCookie(jarCookies, cookie);
        if (!known || !hasSameContent(known, cookie))
            soup_cookie_jar_add_cookie(jar_.get(), soup_cookie_copy(cookie));
    }
    for (GSList* entry = jarCookies; entry; entry = entry->next) {
        auto* cookie = static_cast<SoupCookie*>(entry->data);
        if (!findCookie(engineCookies, cookie))
            soup_cookie_jar_delete_cookie(jar_.get(), cookie);
    }
    applying_ = false;
}

void CookieExchange::jarChanged(SoupCookie* before, SoupCookie* after) {
    if (applying_)
        return;
    if (after)
        pushToEngine(after);
    else if (before)
        removeFromEngine(before);
}

void CookieExchange::pushToEngine(SoupCookie* cookie) {
    ++pushesUnderWay_;
    webkit_cookie_manager_add_cookie(manager_, cookie, nullptr, pushed, request());
}

void CookieExchange::removeFromEngine(SoupCookie* cookie) {
    ++pushesUnderWay_;
    webkit_cookie_manager_delete_cookie(manager_, cookie, nullptr, pushed, request());
}

void CookieExchange::pushed(GObject*, GAsyncResult*, gpointer data) {
    const std::unique_ptr<Request> request(static_cast<Request*>(data));
    auto self = request->exchange.lock();
    if (!self)
        return;
    CookieExchange& exchange = **self;
    if (--exchange.pushesUnderWay_ == 0 && std::exchange(exchange.changedMeanwhile_, false))
        exchange.refreshAll();
}

}
