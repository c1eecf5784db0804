#include "platform/linux/network/CurlNetwork.h"

#include "platform/linux/curl/CurlLoop.h"
#include "platform/linux/network/HTTPExchange.h"
#include "platform/linux/network/ReachabilityWatch.h"

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

void CurlNetwork::watchReachability(const std::string& hostName,
                                    std::function<void(host::Reachability)> handler) {
    watch_.reset();
    if (handler)
        watch_ = ReachabilityWatch::start(hostName, std::move(handler));
}

}
