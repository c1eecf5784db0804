#include "platform/linux/network/CurlNetwork.h"

#include "platform/linux/curl/CurlLoop.h"
#include "platform/linux/network/HTTPExchange.h"

#include <utility>

namespace vistrel {

namespace {

/// Owned by the client; the exchange may have to outlive it until a call to the client returns.
class RunningTransfer : public host::Transfer {
public:
    explicit RunningTransfer(std::shared_ptr<HTTPExchange> exchange)
        : exchange_(std::move(exchange)) {}
    ~RunningTransfer() override { exchange_->cancel(); }
    RunningTransfer(const RunningTransfer&) = delete;
    RunningTransfer& operator=(const RunningTransfer&) = delete;

private:
    std::shared_ptr<HTTPExchange> exchange_;
};

}

CurlNetwork::CurlNetwork(host::EventLoop& loop)
    : loop_(loop)
    , curl_(std::make_shared<CurlLoop>()) {}

CurlNetwork::~CurlNetwork() = default;

std::unique_ptr<host::Transfer> CurlNetwork::start(host::TransferRequest request,
                                                   host::TransferClient& client) {
    auto exchange = std::make_shared<HTTPExchange>(curl_, loop_, std::move(request), client);
    exchange->begin();
    return std::make_unique<RunningTransfer>(std::move(exchange));
}

host::Reachability CurlNetwork::reachability() const {
    GNetworkMonitor* monitor = g_network_monitor_get_default();
    if (!g_network_monitor_get_network_available(monitor))
        return host::Reachability::NotReachable;
    return g_network_monitor_get_network_metered(monitor) ? host::Reachability::Cellular
                                                          : host::Reachability::WiFi;
}

void CurlNetwork::setReachabilityHandler(std::function<void(host::Reachability)> handler) {
    networkChanged_ = {};
    if (handler)
        networkChanged_ = connectSignal<void(gboolean)>(
            g_network_monitor_get_default(), "network-changed",
            [this, handler = std::move(handler)](gboolean) { handler(reachability()); });
}

}
