#include "platform/linux/network/ReachabilityWatch.h"

#include "platform/foundation/Weakly.h"

#include <utility>

namespace vistrel {

namespace {

constexpr guint16 kPort = 80; ///< any will do: the monitor only looks for a route

}

std::shared_ptr<ReachabilityWatch> ReachabilityWatch::start(const std::string& hostName,
                                                            Handler handler) {
    std::shared_ptr<ReachabilityWatch> watch(new ReachabilityWatch(hostName, std::move(handler)));
    watch->changes_ = connectSignal<void(gboolean)>(
        watch->monitor_, "network-changed",
        weakly(watch.get(), [](ReachabilityWatch& self, gboolean) { self.ask(); }));
    watch->ask();
    return watch;
}

ReachabilityWatch::ReachabilityWatch(const std::string& hostName, Handler handler)
    : host_(NativeReference<GSocketConnectable>::adopt(
          g_network_address_new(hostName.c_str(), kPort)))
    , handler_(std::move(handler)) {}

ReachabilityWatch::~ReachabilityWatch() {
    if (question_)
        g_cancellable_cancel(question_.get());
}

void ReachabilityWatch::ask() {
    if (question_)
        g_cancellable_cancel(question_.get());
    question_ = NativeReference<GCancellable>::adopt(g_cancellable_new());
    callAsync(weakly(this, &ReachabilityWatch::answered), g_network_monitor_can_reach_async,
              monitor_, host_.get(), question_.get());
}

void ReachabilityWatch::answered(GAsyncResult* result) {
    GError* error = nullptr;
    const bool reaches = g_network_monitor_can_reach_finish(monitor_, result, &error);
    const bool isOutdated = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED);
    g_clear_error(&error);
    if (isOutdated)
        return;
    question_ = {};
    const auto handler = handler_;
    if (!reaches)
        handler(host::Reachability::NotReachable);
    else
        handler(g_network_monitor_get_network_metered(monitor_) ? host::Reachability::Cellular
                                                                : host::Reachability::WiFi);
}

}
