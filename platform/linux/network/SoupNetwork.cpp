#include "platform/linux/network/SoupNetwork.h"

#include "platform/linux/network/CookieJar.h"
#include "platform/linux/network/SoupTransfer.h"

#include <utility>

namespace vistrel {

namespace {
/// A page's frames and pictures, its probes and a few downloads, all from one site.
constexpr int kConnectionsPerHost = 24;
constexpr int kConnections = 96;
}

SoupNetwork::~SoupNetwork() {
    setReachabilityHandler({});
}

SoupSession* SoupNetwork::session() {
    if (!session_) {
        // Time-outs are each transfer's own.
        session_ = NativeReference<SoupSession>::adopt(
            soup_session_new_with_options("timeout", 0U, "max-conns", kConnections,
                                          "max-conns-per-host", kConnectionsPerHost, nullptr));
        soup_session_add_feature(session_.get(), SOUP_SESSION_FEATURE(sharedCookieJar()));
    }
    return session_.get();
}

std::unique_ptr<host::Transfer> SoupNetwork::start(host::TransferRequest request,
                                                   host::TransferClient& client) {
    return std::make_unique<SoupTransfer>(session(), loop_, std::move(request), client);
}

host::Reachability SoupNetwork::reachability() const {
    GNetworkMonitor* monitor = g_network_monitor_get_default();
    if (!g_network_monitor_get_network_available(monitor))
        return host::Reachability::NotReachable;
    return g_network_monitor_get_network_metered(monitor) ? host::Reachability::Cellular
                                                          : host::Reachability::WiFi;
}

void SoupNetwork::networkChanged(GNetworkMonitor*, gboolean, gpointer self) {
    auto* network = static_cast<SoupNetwork*>(self);
    const auto handler = network->reachabilityHandler_;
    if (handler)
        handler(network->reachability());
}

void SoupNetwork::setReachabilityHandler(std::function<void(host::Reachability)> handler) {
    reachabilityHandler_ = std::move(handler);
    if (reachabilityHandler_ && changedSignal_ == 0) {
        changedSignal_ = g_signal_connect(g_network_monitor_get_default(), "network-changed",
                                          G_CALLBACK(networkChanged), this);
    } else if (!reachabilityHandler_ && changedSignal_ != 0) {
        g_signal_handler_disconnect(g_network_monitor_get_default(),
                                    std::exchange(changedSignal_, 0));
    }
}

}
