#include "platform/linux/modules/DeferredNetwork.h"

#include "platform/host/EventLoop.h"

#include <string>
#include <utility>

namespace vistrel {

namespace {

/// A transfer without the network module. It fails in the loop's next turn.
class FailingTransfer : public host::Transfer {
public:
    FailingTransfer(host::EventLoop& loop, host::TransferClient& client, std::string reason)
        : loop_(loop)
        , failure_(loop.schedule(0, [&client, reason = std::move(reason)] {
            client.transferDidFail({host::TransferErrorKind::Other, reason});
        })) {}
    ~FailingTransfer() override { loop_.cancel(failure_); }
    FailingTransfer(const FailingTransfer&) = delete;
    FailingTransfer& operator=(const FailingTransfer&) = delete;

private:
    host::EventLoop& loop_;
    host::EventLoop::Token failure_;
};

}

DeferredNetwork::DeferredNetwork(host::EventLoop& loop, NativeModule::Log log)
    : loop_(loop)
    , network_("network", std::move(log), kCreateNetworkSymbol, [&loop](CreateNetwork create) {
        return std::shared_ptr<host::Network>(create(loop));
    }) {}

std::unique_ptr<host::Transfer> DeferredNetwork::start(host::TransferRequest request,
                                                       host::TransferClient& client) {
    if (auto* network = network_.get())
        return network->start(std::move(request), client);
    return std::make_unique<FailingTransfer>(loop_, client, network_.missing().message);
}

void DeferredNetwork::watchReachability(const std::string& hostName,
                                        std::function<void(host::Reachability)> handler) {
    // Clearing the handler does not need the module.
    if (auto* network = handler ? network_.get() : network_.existing())
        network->watchReachability(hostName, std::move(handler));
}

SoupCookieJar* DeferredNetwork::cookieJar() {
    const auto jar = network_.function<SharedCookieJar>(kSharedCookieJarSymbol);
    return jar ? jar() : nullptr;
}

}
