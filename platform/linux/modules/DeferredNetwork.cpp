#include "platform/linux/modules/DeferredNetwork.h"

#include "platform/host/EventLoop.h"

#include <utility>

namespace vistrel {

namespace {

/// A transfer without the network module: fails in the loop's next turn.
class FailingTransfer : public host::Transfer {
public:
    FailingTransfer(host::EventLoop& loop, host::TransferClient& client)
        : loop_(loop)
        , failure_(loop.schedule(0, [&client] {
            client.transferDidFail(
                {host::TransferErrorKind::Other, "The network module is not installed."});
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
    , module_("vistrel-network.so", std::move(log)) {}

host::Network* DeferredNetwork::network() const {
    if (!network_)
        if (auto create = reinterpret_cast<CreateNetwork>(module_.symbol(kCreateNetworkSymbol)))
            network_.reset(create(loop_));
    return network_.get();
}

std::unique_ptr<host::Transfer> DeferredNetwork::start(host::TransferRequest request,
                                                       host::TransferClient& client) {
    if (!network())
        return std::make_unique<FailingTransfer>(loop_, client);
    return network_->start(std::move(request), client);
}

host::Reachability DeferredNetwork::reachability() const {
    return network() ? network_->reachability() : host::Reachability::Unknown;
}

void DeferredNetwork::setReachabilityHandler(std::function<void(host::Reachability)> handler) {
    // Clearing the handler does not need the module.
    if (network_ || handler)
        if (network())
            network_->setReachabilityHandler(std::move(handler));
}

SoupCookieJar* DeferredNetwork::cookieJar() {
    const auto jar = reinterpret_cast<SharedCookieJar>(module_.symbol(kSharedCookieJarSymbol));
    return jar ? jar() : nullptr;
}

}
