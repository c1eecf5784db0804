#include "platform/linux/network/ExchangeCookies.h"

#include "platform/linux/network/CookieJar.h"

namespace vistrel {

namespace {

NativeReference<SoupCookieJar> copyOf(SoupCookieJar* jar) {
    SoupCookieJar* copy = soup_cookie_jar_new();
    GSList* cookies = soup_cookie_jar_all_cookies(jar);
    for (GSList* each = cookies; each; each = each->next)
        soup_cookie_jar_add_cookie(copy, static_cast<SoupCookie*>(each->data));
    g_slist_free(cookies);
    return NativeReference<SoupCookieJar>::adopt(copy);
}

}

ExchangeCookies::ExchangeCookies(host::CookieUse use, const std::string& mainDocument)
    : use_(use)
    , mainDocument_(mainDocument.empty() ? nullptr
                                         : g_uri_parse(mainDocument.c_str(),
                                                       GUriFlags(SOUP_HTTP_URI_FLAGS), nullptr))
    , jar_(NativeReference<SoupCookieJar>::ref(sharedCookieJar())) {}

ExchangeCookies::~ExchangeCookies() {
    if (mainDocument_)
        g_uri_unref(mainDocument_);
}

std::string ExchangeCookies::fieldFor(GUri* uri) const {
    if (use_ == host::CookieUse::None)
        return {};
    GUri* document = mainDocument_ ? mainDocument_ : uri;
    GSList* cookies = soup_cookie_jar_get_cookie_list_with_same_site_info(
        jar_.get(), uri, document, document, TRUE, TRUE, FALSE);
    char* text = cookies ? soup_cookies_to_cookie_header(cookies) : nullptr;
    std::string field = text ? text : "";
    g_free(text);
    g_slist_free_full(cookies, reinterpret_cast<GDestroyNotify>(soup_cookie_free));
    return field;
}

void ExchangeCookies::take(GUri* uri, const std::string& field) {
    if (use_ == host::CookieUse::None)
        return;
    if (use_ == host::CookieUse::SendOnly && jar_.get() == sharedCookieJar())
        jar_ = copyOf(sharedCookieJar());
    soup_cookie_jar_set_cookie(jar_.get(), uri, field.c_str());
}

}
