#pragma once
#include "platform/host/EventLoop.h"
#include "platform/host/Network.h"
#include "platform/linux/NativeReference.h"

#include <gio/gio.h>
#include <libsoup/soup.h>

namespace vistrel {

/// HTTP over libsoup on the main loop. One session and one cookie jar for the process; both are
/// made at the first transfer.
class SoupNetwork : public host::Network {
public:
    explicit SoupNetwork(host::EventLoop& loop)
        : loop_(loop) {}
    ~SoupNetwork() override;
    SoupNetwork(const SoupNetwork&) = delete;
    SoupNetwork& operator=(const SoupNetwork&) = delete;

    std::unique_ptr<host::Transfer> start(host::TransferRequest request,
                                          host::TransferClient& client) override;
    host::Reachability reachability() const override;
    void setReachabilityHandler(std::function<void(host::Reachability)> handler) override;

private:
    SoupSession* session();
    static void networkChanged(GNetworkMonitor* monitor, gboolean available, gpointer self);

    host::EventLoop& loop_;
    NativeReference<SoupSession> session_;
    std::function<void(host::Reachability)> reachabilityHandler_;
    gulong changedSignal_ = 0;
};

}
