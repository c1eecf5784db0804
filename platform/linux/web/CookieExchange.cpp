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

constexpr guint kAnswerMilliseconds = 1000;

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

struct CookieExchange::Wait {
    std::weak_ptr<CookieExchange*> exchange;
    Question question;
    std::function<void()> done;
    bool settled = false;
};

/// One question or order to the engine.
struct CookieExchange::Request {
    ~Request() {
        // The engine's task lets go of the cookie manager after its callback has returned, and the
        // manager must not outlive the session.
        g_idle_add_once([](gpointer held) { g_object_unref(held); }, g_object_ref(session.get()));
    }
    NativeReference<WebKitNetworkSession> session;
    std::shared_ptr<Wait> wait;
    std::string url;
};

CookieExchange::Request* CookieExchange::request(Question question, std::string url,
                                                 std::function<void()> done) {
    auto wait = std::make_shared<Wait>(Wait{self_, question, std::move(done)});
    // On a loaded machine the engine has been seen to lose an answer: a page must not wait for
    // ever.
    g_timeout_add_full(
        G_PRIORITY_DEFAULT, kAnswerMilliseconds,
        [](gpointer data) -> gboolean {
            Wait& late = **static_cast<std::shared_ptr<Wait>*>(data);
            const auto self = late.exchange.lock();
            // What the lost answer would have said is still unknown: ask again.
            if (self && !late.settled && late.question == Question::All)
                (*self)->changedMeanwhile_ = true;
            settle(late);
            return G_SOURCE_REMOVE;
        },
        new std::shared_ptr<Wait>(wait),
        [](gpointer data) { delete static_cast<std::shared_ptr<Wait>*>(data); });
    return new Request{session_, std::move(wait), std::move(url)};
}

void CookieExchange::settle(Wait& wait) {
    const auto self = wait.exchange.lock();
    if (!self || std::exchange(wait.settled, true))
        return;
    CookieExchange& exchange = **self;
    switch (wait.question) {
    case Question::Address:
        wait.done();
        return;
    case Question::All:
        exchange.refreshUnderWay_ = false;
        break;
    case Question::Push:
        if (--exchange.pushesUnderWay_ != 0)
            return;
        break;
    }
    if (std::exchange(exchange.changedMeanwhile_, false))
        exchange.refreshAll();
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
                                      request(Question::Address, url, std::move(done)));
}

void CookieExchange::refreshAll() {
    if (refreshUnderWay_) {
        changedMeanwhile_ = true;
        return;
    }
    refreshUnderWay_ = true;
    webkit_cookie_manager_get_all_cookies(manager_, cancellable_.get(), received,
                                          request(Question::All));
}

void CookieExchange::received(GObject* manager, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Request> request(static_cast<Request*>(data));
    Wait& wait = *request->wait;
    GError* error = nullptr;
    const bool all = wait.question == Question::All;
    GList* cookies = all ? webkit_cookie_manager_get_all_cookies_finish(
                               WEBKIT_COOKIE_MANAGER(manager), result, &error)
                         : webkit_cookie_manager_get_cookies_finish(WEBKIT_COOKIE_MANAGER(manager),
                                                                    result, &error);
    const bool failed = error != nullptr;
    g_clear_error(&error);
    const auto self = wait.exchange.lock();
    if (self && !failed && !wait.settled)
        (*self)->mirrorAnswer(cookies, all ? std::string() : request->url);
    settle(wait);
    freeCookies(cookies);
}

void CookieExchange::mirrorAnswer(GList* cookies, const std::string& url) {
    GUri* uri =
        url.empty() ? nullptr : g_uri_parse(url.c_str(), GUriFlags(SOUP_HTTP_URI_FLAGS), nullptr);
    if (!url.empty() && !uri)
        return;
    GSList* known = uri ? soup_cookie_jar_get_cookie_list(jar_.get(), uri, TRUE)
                        : soup_cookie_jar_all_cookies(jar_.get());
    mirror(cookies, known);
    freeCookies(known);
    if (uri)
        g_uri_unref(uri);
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
    webkit_cookie_manager_add_cookie(manager_, cookie, nullptr, pushed, request(Question::Push));
}

void CookieExchange::removeFromEngine(SoupCookie* cookie) {
    ++pushesUnderWay_;
    webkit_cookie_manager_delete_cookie(manager_, cookie, nullptr, pushed, request(Question::Push));
}

void CookieExchange::pushed(GObject*, GAsyncResult*, gpointer data) {
    const std::unique_ptr<Request> request(static_cast<Request*>(data));
    settle(*request->wait);
}

}
