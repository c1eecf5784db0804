#include "platform/linux/curl/CurlLoop.h"

#include "platform/linux/curl/CurlTransfer.h"

#include <glib-unix.h>

#include <utility>

namespace vistrel {

namespace {

/// A page's frames and pictures, its probes and a few downloads, all from one site.
constexpr long kConnectionsPerHost = 24;
constexpr long kConnections = 96;

CURLM* newMulti() {
    static const CURLcode ready = curl_global_init(CURL_GLOBAL_DEFAULT);
    (void)ready;
    return curl_multi_init();
}

void removeSource(guint& source) {
    if (source != 0)
        g_source_remove(std::exchange(source, 0));
}

}

CurlLoop::CurlLoop()
    : multi_(newMulti()) {
    curl_multi_setopt(multi_, CURLMOPT_SOCKETFUNCTION, &CurlLoop::watchSocket);
    curl_multi_setopt(multi_, CURLMOPT_SOCKETDATA, this);
    curl_multi_setopt(multi_, CURLMOPT_TIMERFUNCTION, &CurlLoop::setTimer);
    curl_multi_setopt(multi_, CURLMOPT_TIMERDATA, this);
    curl_multi_setopt(multi_, CURLMOPT_MAX_HOST_CONNECTIONS, kConnectionsPerHost);
    curl_multi_setopt(multi_, CURLMOPT_MAX_TOTAL_CONNECTIONS, kConnections);
}

CurlLoop::~CurlLoop() {
    curl_multi_cleanup(multi_);
    removeSource(timer_);
    removeSource(wake_);
}

void CurlLoop::add(CURL* handle) {
    curl_multi_add_handle(multi_, handle);
}

void CurlLoop::remove(CURL* handle) {
    curl_multi_remove_handle(multi_, handle);
}

void CurlLoop::wake(std::weak_ptr<CurlTransfer> transfer) {
    awake_.push_back(std::move(transfer));
    if (wake_ == 0)
        wake_ = g_idle_add_full(G_PRIORITY_DEFAULT_IDLE, &CurlLoop::wakeFired, this, nullptr);
}

int CurlLoop::watchSocket(CURL*, curl_socket_t socket, int events, void* self, void* source) {
    if (const guint old = GPOINTER_TO_UINT(source))
        g_source_remove(old);
    auto* loop = static_cast<CurlLoop*>(self);
    guint watch = 0;
    if (events != CURL_POLL_REMOVE) {
        const int condition = ((events & CURL_POLL_IN) != 0 ? G_IO_IN : 0) |
                              ((events & CURL_POLL_OUT) != 0 ? G_IO_OUT : 0);
        watch = g_unix_fd_add_full(G_PRIORITY_DEFAULT_IDLE, socket,
                                   static_cast<GIOCondition>(condition), &CurlLoop::socketReady,
                                   loop, nullptr);
    }
    curl_multi_assign(loop->multi_, socket, GUINT_TO_POINTER(watch));
    return 0;
}

gboolean CurlLoop::socketReady(gint socket, GIOCondition condition, gpointer self) {
    const int events = ((condition & G_IO_IN) != 0 ? CURL_CSELECT_IN : 0) |
                       ((condition & G_IO_OUT) != 0 ? CURL_CSELECT_OUT : 0) |
                       ((condition & (G_IO_ERR | G_IO_HUP)) != 0 ? CURL_CSELECT_ERR : 0);
    static_cast<CurlLoop*>(self)->act(socket, events);
    return G_SOURCE_CONTINUE;
}

int CurlLoop::setTimer(CURLM*, long milliseconds, void* self) {
    auto* loop = static_cast<CurlLoop*>(self);
    removeSource(loop->timer_);
    if (milliseconds >= 0)
        loop->timer_ = g_timeout_add_full(G_PRIORITY_DEFAULT_IDLE, static_cast<guint>(milliseconds),
                                          &CurlLoop::timerFired, loop, nullptr);
    return 0;
}

gboolean CurlLoop::timerFired(gpointer self) {
    auto* loop = static_cast<CurlLoop*>(self);
    loop->timer_ = 0;
    loop->act(CURL_SOCKET_TIMEOUT, 0);
    return G_SOURCE_REMOVE;
}

gboolean CurlLoop::wakeFired(gpointer self) {
    auto* loop = static_cast<CurlLoop*>(self);
    loop->wake_ = 0;
    loop->callTransfers();
    return G_SOURCE_REMOVE;
}

void CurlLoop::act(curl_socket_t socket, int events) {
    int running = 0;
    curl_multi_socket_action(multi_, socket, events, &running);
    callTransfers();
}

void CurlLoop::callTransfers() {
    removeSource(wake_);
    for (const auto& awake : std::exchange(awake_, {})) {
        if (const auto transfer = awake.lock()) {
            transfer->awake_ = false;
            transfer->progressed();
        }
    }
    int left = 0;
    while (CURLMsg* message = curl_multi_info_read(multi_, &left)) {
        CurlTransfer* ended = nullptr;
        curl_easy_getinfo(message->easy_handle, CURLINFO_PRIVATE, &ended);
        const CURLcode result = message->data.result;
        const auto transfer = ended->shared_from_this();
        transfer->stop();
        transfer->ended(result);
    }
}

}
