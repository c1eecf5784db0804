#include "platform/linux/network/CookieJar.h"
#include "platform/linux/network/CurlNetwork.h"
#include "platform/linux/network/NetworkSetup.h"

extern "C" __attribute__((visibility("default"))) vistrel::host::Network*
vistrel_create_network(vistrel::host::EventLoop& loop) {
    return new vistrel::CurlNetwork(loop);
}

extern "C" __attribute__((visibility("default"))) SoupCookieJar* vistrel_shared_cookie_jar() {
    return vistrel::sharedCookieJar();
}
