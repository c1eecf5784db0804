#pragma once
#include "platform/host/Network.h"

#include <libsoup/soup.h>

namespace vistrel::host {
class EventLoop;
}

namespace vistrel {
class SoupExchange;

/// A running transfer: cancels its exchange when destroyed.
class SoupTransfer : public host::Transfer {
public:
    SoupTransfer(SoupSession* session, host::EventLoop& loop, host::TransferRequest request,
                 host::TransferClient& client);
    ~SoupTransfer() override;
    SoupTransfer(const SoupTransfer&) = delete;
    SoupTransfer& operator=(const SoupTransfer&) = delete;

private:
    std::shared_ptr<SoupExchange> exchange_;
};

}
