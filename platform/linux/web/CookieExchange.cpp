#include "platform/linux/web/CookieExchange.h"

#include "platform/foundation/Weakly.h"

#include <cstring>
#include <utility>

namespace vistrel {

namespace {

/// RFC 6265, 5.3: a cookie is identified by name, domain and path.
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

/// One question or order to the engine. On a loaded machine the engine has been seen to lose an
/// answer, and a page must not wait forever: the wait ends after a second.
struct CookieExchange::Wait {
    Wait(NativeReference<WebKitNetworkSession> heldSession, std::function<void(bool)> tell)
        : session(std::move(heldSession))
        , done(std::move(tell)) {}
    Wait(const Wait&) = delete;
    Wait& operator=(const Wait&) = delete;
    ~Wait() {
        // The engine's task releases the cookie manager after its callback has returned, and the
        // manager must not outlive the session.
        g_idle_add_once([](gpointer held) { g_object_unref(held); }, g_object_ref(session.get()));
    }
    bool isOver() const { return !done; }
    void end(bool answered) {
        if (const auto told = std::exchange(done, nullptr))
            told(answered);
    }
    NativeReference<WebKitNetworkSession> session;
    std::function<void(bool answered)> done;
};

std::shared_ptr<CookieExchange::Wait>
CookieExchange::wait(std::function<void(bool answered)> done) const {
    auto wait = std::make_shared<Wait>(session_, std::move(done));
    callLater(
        [weak = std::weak_ptr(wait)] {
            if (const auto late = weak.lock())
                late->end(false);
        },
        kAnswerMilliseconds);
    return wait;
}

std::shared_ptr<CookieExchange> CookieExchange::between(WebKitNetworkSession* session,
                                                        SoupCookieJar* jar) {
    std::shared_ptr<CookieExchange> exchange(new CookieExchange(session, jar));
    exchange->begin();
    return exchange;
}

CookieExchange::CookieExchange(WebKitNetworkSession* session, SoupCookieJar* jar)
    : session_(NativeReference<WebKitNetworkSession>::ref(session))
    , manager_(webkit_network_session_get_cookie_manager(session))
    , jar_(NativeReference<SoupCookieJar>::ref(jar))
    , cancellable_(NativeReference<GCancellable>::adopt(g_cancellable_new())) {}

void CookieExchange::begin() {
    engineChanged_ =
        connectSignal<void()>(manager_, "changed", weakly(this, &CookieExchange::refreshAll));
    jarChanged_ = connectSignal<void(SoupCookie*, SoupCookie*)>(
        jar_.get(), "changed", weakly(this, &CookieExchange::jarChanged));
    GSList* cookies = soup_cookie_jar_all_cookies(jar_.get());
    for (GSList* entry = cookies; entry; entry = entry->next)
        jarChanged(nullptr, static_cast<SoupCookie*>(entry->data));
    freeCookies(cookies);
    refreshAll();
}

CookieExchange::~CookieExchange() {
    g_cancellable_cancel(cancellable_.get());
}

void CookieExchange::refresh(const std::string& url, std::function<void()> done) {
    const auto asked =
        wait(weakly(this, [done = std::move(done)](CookieExchange&, bool) { done(); }));
    callAsync(received(webkit_cookie_manager_get_cookies_finish, url, asked),
              webkit_cookie_manager_get_cookies, manager_, url.c_str(), cancellable_.get());
}

void CookieExchange::refreshAll() {
    if (refreshUnderWay_) {
        changedMeanwhile_ = true;
        return;
    }
    refreshUnderWay_ = true;
    const auto asked = wait(weakly(this, [](CookieExchange& self, bool answered) {
        self.refreshUnderWay_ = false;
        // What a lost answer would have told is still unknown.
        self.changedMeanwhile_ |= !answered;
        self.catchUp();
    }));
    callAsync(received(webkit_cookie_manager_get_all_cookies_finish, {}, asked),
              webkit_cookie_manager_get_all_cookies, manager_, cancellable_.get());
}

void CookieExchange::catchUp() {
    if (std::exchange(changedMeanwhile_, false))
        refreshAll();
}

std::function<void(GAsyncResult*)> CookieExchange::received(FinishQuestion finish,
                                                            const std::string& url,
                                                            std::shared_ptr<Wait> asked) {
    return [finish, url, asked = std::move(asked), weak = weak_from_this()](GAsyncResult* result) {
        const auto self = weak.lock();
        if (!self || asked->isOver())
            return;
        GError* error = nullptr;
        GList* cookies = finish(self->manager_, result, &error);
        if (!error)
            self->mirrorAnswer(cookies, url);
        g_clear_error(&error);
        freeCookies(cookies);
        asked->end(true);
    };
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
    // What is still on its way to the engine must neither pass for deleted nor be overwritten.
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
    if (applying_ || (!before && !after))
        return;
    ++pushesUnderWay_;
    const auto ordered = wait(weakly(
        this,
        [](CookieExchange& self, bool) {
            if (--self.pushesUnderWay_ == 0)
                self.catchUp();
        }));
    callAsync([ordered](GAsyncResult*) { ordered->end(true); },
              after ? webkit_cookie_manager_add_cookie : webkit_cookie_manager_delete_cookie,
              manager_, after ? after : before, nullptr);
}

}
