#pragma once
#include <curl/curl.h>
#include <glib.h>

#include <memory>
#include <vector>

namespace vistrel {
class CurlTransfer;

/// Runs transfers of libcurl on the default main context, at the priority of idle work: after input
/// and frames, so that a fast server does not delay the screen.
class CurlLoop {
public:
    CurlLoop();
    ~CurlLoop();
    CurlLoop(const CurlLoop&) = delete;
    CurlLoop& operator=(const CurlLoop&) = delete;

private:
    friend class CurlTransfer;

    void add(CURL* handle);
    void remove(CURL* handle);
    /// Calls the transfer's progressed() as soon as the library has returned.
    void wake(std::weak_ptr<CurlTransfer> transfer);

    static int watchSocket(CURL* handle, curl_socket_t socket, int events, void* self,
                           void* source);
    static int setTimer(CURLM* multi, long milliseconds, void* self);
    static gboolean socketReady(gint socket, GIOCondition condition, gpointer self);
    static gboolean timerFired(gpointer self);
    static gboolean wakeFired(gpointer self);
    void act(curl_socket_t socket, int events);
    void callTransfers();

    CURLM* multi_;
    guint timer_ = 0; ///< asked for by the library
    guint wake_ = 0;
    std::vector<std::weak_ptr<CurlTransfer>> awake_;
};

}
