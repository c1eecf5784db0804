#pragma once
#include "platform/host/EventLoop.h"
#include "platform/host/Network.h"

#include <memory>

namespace vistrel {
class CurlLoop;
class ReachabilityWatch;

/// HTTP over libcurl on the main loop.
class CurlNetwork : public host::Network {
public:
    /// The loop must outlive it.
    explicit CurlNetwork(host::EventLoop& loop);
    ~CurlNetwork() override;

    std::unique_ptr<host::Transfer> start(host::TransferRequest request,
                                          host::TransferClient& client) override;
    void watchReachability(const std::string& hostName,
                           std::function<void(host::Reachability)> handler) override;

private:
    host::EventLoop& loop_;
    std::shared_ptr<CurlLoop> curl_;
    std::shared_ptr<ReachabilityWatch> watch_;
};

}
