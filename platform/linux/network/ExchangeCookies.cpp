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

ExchangeCookies::ExchangeCookies(host::CookieUse use)
    : use_(use)
    , jar_(NativeReference<SoupCookieJar>::ref(sharedCookieJar())) {}

std::string ExchangeCookies::fieldFor(GUri* uri) const {
    if (use_ == host::CookieUse::None)
        return {};
    char* cookies = soup_cookie_jar_get_cookies(jar_.get(), uri, TRUE);
    std::string field = cookies ? cookies : "";
    g_free(cookies);
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
