#pragma once
#include "platform/host/Network.h"
#include "platform/linux/NativeCallback.h"
#include "platform/linux/NativeReference.h"

#include <gio/gio.h>

#include <functional>
#include <memory>
#include <string>

namespace vistrel {

/// Reports whether a host can be reached, now and whenever the network changes.
class ReachabilityWatch : public std::enable_shared_from_this<ReachabilityWatch> {
public:
    using Handler = std::function<void(host::Reachability)>;

    /// Watches until the result is destroyed.
    static std::shared_ptr<ReachabilityWatch> start(const std::string& hostName, Handler handler);
    ~ReachabilityWatch();
    ReachabilityWatch(const ReachabilityWatch&) = delete;
    ReachabilityWatch& operator=(const ReachabilityWatch&) = delete;

private:
    ReachabilityWatch(const std::string& hostName, Handler handler);
    void ask();
    void answered(GAsyncResult* result);

    GNetworkMonitor* monitor_ = g_network_monitor_get_default();
    NativeReference<GSocketConnectable> host_;
    NativeReference<GCancellable> question_; ///< null unless an answer is pending
    SignalConnection changes_;
    Handler handler_;
};

}
