#include "platform/linux/network/CookieJar.h"

namespace vistrel {

SoupCookieJar* sharedCookieJar() {
    static SoupCookieJar* jar = soup_cookie_jar_new();
    return jar;
}

}
