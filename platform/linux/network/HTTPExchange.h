#pragma once
#include "platform/host/EventLoop.h"
#include "platform/host/Network.h"
#include "platform/linux/NativeReference.h"
#include "platform/linux/curl/CurlTransfer.h"
#include "platform/linux/network/BodyDecoder.h"
#include "platform/linux/network/ExchangeCookies.h"
#include "platform/linux/network/HTTPHead.h"
#include "platform/linux/network/HTTPRequest.h"

#include <gio/gio.h>

#include <memory>
#include <optional>
#include <vector>

namespace vistrel {

/// One request with its redirects and its answer. Each hop is a separate transfer.
class HTTPExchange : public CurlTransfer {
public:
    HTTPExchange(std::shared_ptr<CurlLoop> curl, host::EventLoop& loop,
                 host::TransferRequest request, host::TransferClient& client);
    ~HTTPExchange() override;

    void begin();
    /// Closes the connection; the client is not called again.
    void cancel();

private:
    static std::size_t takeHeaderLine(char* bytes, std::size_t size, std::size_t count, void* self);
    static std::size_t takeBody(char* bytes, std::size_t size, std::size_t count, void* self);
    void progressed() override;
    void ended(CURLcode result) override;

    void sendHop();
    void proxiesFound(GAsyncResult* result);
    void send(const std::string& proxy);
    void takeCookies();
    host::TransferResponse response() const;
    void follow(const std::string& location);
    void announce();
    void deliver();
    void deliverDecoded();
    void resumeReading();
    bool bodyIsWhole() const;
    void finish();
    void fail(const host::TransferError& error);
    void failLater(host::TransferError error);
    void restartTimeout();
    void timeoutPassed();
    void stopTimers();

    host::EventLoop& loop_;
    host::TransferRequest request_;
    host::TransferClient* client_; ///< null once it must not be called again
    ExchangeCookies cookies_;
    NativeReference<GCancellable> cancellable_;
    int redirects_ = 0;

    ParsedURI uri_;
    HeaderList headers_;
    HTTPHead head_;
    bool headIsTooLong_ = false;
    bool answered_ = false;
    std::int64_t expected_ = -1;
    std::vector<std::byte> received_; ///< but not yet delivered
    std::size_t decodedBytes_ = 0;    ///< of received_
    bool paused_ = false;
    std::unique_ptr<BodyDecoder> decoder_;
    std::optional<CURLcode> result_;

    double lastByte_ = 0;
    host::EventLoop::Token timeout_ = 0;
    host::EventLoop::Token failure_ = 0;
};

}
