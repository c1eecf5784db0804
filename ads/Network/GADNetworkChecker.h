#pragma once
#include "platform/host/Network.h"

#include <optional>
#include <string>

namespace vistrel {

/// The kind of network, with the library's numbers.
enum class GADNetworkType { Unknown = 0, NotReachable = 1, WiFi = 2, Cellular = 3 };

/// Watches the reachability of the vendor's host while it is enabled.
class GADNetworkChecker {
public:
    /// Made and enabled on first use.
    static GADNetworkChecker& sharedChecker();
    /// Disables and releases the shared checker; the next use creates a new one.
    static void releaseSharedChecker();

    ~GADNetworkChecker();
    GADNetworkChecker(const GADNetworkChecker&) = delete;
    GADNetworkChecker& operator=(const GADNetworkChecker&) = delete;

    /// The type is unknown until the first report, in the next pass of the run loop.
    void setEnabled(bool enabled);
    bool isEnabled() const { return enabled_; }
    GADNetworkType networkType() const { return networkType_; }
    /// "wi" or "ed"; empty while there is no network or it is unknown.
    std::optional<std::string> networkTypeString() const;
    /// Reports received.
    int changeCount() const { return changeCount_; }

private:
    GADNetworkChecker() = default;
    void report(host::Reachability reachability);

    bool enabled_ = false;
    GADNetworkType networkType_ = GADNetworkType::Unknown;
    int changeCount_ = 0;
};

}
