#pragma once
#include "platform/foundation/NSURLConnectionDelegate.h"
#include "platform/foundation/NSURLRequest.h"
#include "platform/host/Network.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace vistrel {

/// One asynchronous HTTP transfer. While it runs it keeps itself and its delegate alive; callbacks
/// arrive on the main run loop, never before the call that started it has returned.
class NSURLConnection : public std::enable_shared_from_this<NSURLConnection>,
                        private host::TransferClient {
public:
    enum class StartsImmediately { No, Yes };

    /// initWithRequest:delegate:startImmediately:. The delegate is retained until the transfer
    /// ends.
    static std::shared_ptr<NSURLConnection>
    withRequestDelegate(NSURLRequest request, std::shared_ptr<NSURLConnectionDelegate> delegate,
                        StartsImmediately starts = StartsImmediately::Yes);
    ~NSURLConnection() override;

    /// Starting a running connection again does nothing.
    void start();
    /// Nothing more is reported; the delegate is released.
    void cancel();

private:
    NSURLConnection(NSURLRequest request, std::shared_ptr<NSURLConnectionDelegate> delegate);

    bool isRunning() const { return keepAlive_ != nullptr; }
    void begin();
    void send(NSURLRequest request);
    void stopAtRedirect(const NSURLResponse& response);
    void fail(int code, const std::string& description);
    void end();

    bool transferWillRedirect(const host::TransferResponse& redirect,
                              const std::string& url) override;
    void transferDidReceiveResponse(const host::TransferResponse& response) override;
    void transferDidReceiveData(std::span<const std::byte> bytes) override;
    void transferDidFinish() override;
    void transferDidFail(const host::TransferError& error) override;

    NSURLRequest request_;
    NSURLRequest current_; ///< the last one sent, after redirects
    std::shared_ptr<NSURLConnectionDelegate> delegate_;
    std::unique_ptr<host::Transfer> transfer_;
    std::shared_ptr<NSURLConnection> keepAlive_; ///< set while running
    int restarts_ = 0;
    std::uint64_t pending_ = 0; ///< the turn at which it begins
};

}
