#pragma once
#include "platform/host/Network.h"
#include "platform/linux/modules/DeferredService.h"
#include "platform/linux/network/NetworkSetup.h"

#include <memory>

namespace vistrel {

/// The network, loaded for the first transfer.
class DeferredNetwork : public host::Network {
public:
    /// The loop must outlive it.
    DeferredNetwork(host::EventLoop& loop, NativeModule::Log log);

    std::unique_ptr<host::Transfer> start(host::TransferRequest request,
                                          host::TransferClient& client) override;
    void watchReachability(const std::string& hostName,
                           std::function<void(host::Reachability)> handler) override;

    /// The cookies of the connections; null when the module cannot be opened.
    SoupCookieJar* cookieJar();

private:
    host::EventLoop& loop_;
    mutable DeferredService<host::Network, CreateNetwork> network_;
};

}
