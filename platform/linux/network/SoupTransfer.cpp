#include "platform/linux/network/SoupTransfer.h"

#include "platform/linux/network/SoupExchange.h"

#include <utility>

namespace vistrel {

SoupTransfer::SoupTransfer(SoupSession* session, host::EventLoop& loop,
                           host::TransferRequest request, host::TransferClient& client)
    : exchange_(std::make_shared<SoupExchange>(session, loop, std::move(request), client)) {
    exchange_->begin();
}

SoupTransfer::~SoupTransfer() {
    exchange_->cancel();
}

}
