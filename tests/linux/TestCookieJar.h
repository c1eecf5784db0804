#pragma once
#include "platform/linux/NativeReference.h"
#include "tests/support/Testing.h"

#include <libsoup/soup.h>

namespace vistrel {

/// A cookie jar and the cookies that belong to an address.
class TestCookieJar {
public:
    SoupCookieJar* get() const { return jar_.get(); }
    void clear() { *this = {}; }
    /// As a Set-Cookie field from the address.
    void set(const std::string& url, const std::string& field) const {
        soup_cookie_jar_set_cookie(get(), parsed(url).get(), field.c_str());
    }
    /// Empty when there is no such cookie.
    std::string value(const std::string& url, const std::string& name) const {
        GSList* cookies = soup_cookie_jar_get_cookie_list(get(), parsed(url).get(), TRUE);
        std::string value;
        for (GSList* entry = cookies; entry; entry = entry->next)
            if (name == soup_cookie_get_name(static_cast<SoupCookie*>(entry->data)))
                value = soup_cookie_get_value(static_cast<SoupCookie*>(entry->data));
        g_slist_free_full(cookies, reinterpret_cast<GDestroyNotify>(soup_cookie_free));
        return value;
    }

private:
    static std::unique_ptr<GUri, decltype(&g_uri_unref)> parsed(const std::string& url) {
        return {g_uri_parse(url.c_str(), GUriFlags(SOUP_HTTP_URI_FLAGS), nullptr), g_uri_unref};
    }

    NativeReference<SoupCookieJar> jar_ =
        NativeReference<SoupCookieJar>::adopt(soup_cookie_jar_new());
};

}
