#pragma once
#include "platform/host/EventLoop.h"
#include "platform/host/Network.h"
#include "platform/linux/NativeReference.h"

#include <libsoup/soup.h>

#include <memory>
#include <vector>

namespace vistrel {

/// One request with its redirects and its answer. Lives until its last pending call into the
/// library has come back, which may be after it was cancelled.
class SoupExchange : public std::enable_shared_from_this<SoupExchange> {
public:
    SoupExchange(SoupSession* session, host::EventLoop& loop, host::TransferRequest request,
                 host::TransferClient& client);
    ~SoupExchange();
    SoupExchange(const SoupExchange&) = delete;
    SoupExchange& operator=(const SoupExchange&) = delete;

    void begin();
    /// The client hears nothing more, and the connection is closed.
    void cancel();

private:
    using Member = void (SoupExchange::*)(GAsyncResult*);
    struct Call;

    void sendHop();
    void headArrived(GAsyncResult* result);
    void takeHead(GAsyncResult* result);
    bool followRedirect();
    void readChunk();
    void chunkArrived(GAsyncResult* result);
    void takeChunk(GAsyncResult* result);
    void endOfBody();
    void failWith(const GError* error);
    void fail(host::TransferErrorKind kind, const std::string& message);
    void failLater(host::TransferErrorKind kind, const std::string& message);
    void dropAnswer(bool completely);
    void restartTimeout();
    void timeoutPassed();
    void stopTimers();
    /// User data for the library's callback, which ends in `member`.
    gpointer callInto(Member member);
    static void completed(GObject* source, GAsyncResult* result, gpointer call);

    NativeReference<SoupSession> session_;
    host::EventLoop& loop_;
    host::TransferRequest request_;
    host::TransferClient* client_; ///< null once it is to hear nothing more
    NativeReference<GCancellable> cancellable_;
    NativeReference<SoupMessage> message_;
    NativeReference<GInputStream> body_;
    std::unique_ptr<std::byte[]> buffer_;
    int redirects_ = 0;
    std::int64_t expected_ = -1;
    std::int64_t received_ = 0;
    double lastByte_ = 0;
    host::EventLoop::Token timeout_ = 0;
    host::EventLoop::Token failure_ = 0;
};

}
