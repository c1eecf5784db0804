#include "ads/Network/GADNetworkChecker.h"

#include "ads/GADSettings.h"
#include "platform/host/Host.h"

#include <memory>
#include <utility>

namespace vistrel {

namespace {

std::unique_ptr<GADNetworkChecker>& shared() {
    static auto* checker = new std::unique_ptr<GADNetworkChecker>; // outlives the host at exit
    return *checker;
}

GADNetworkType typeOf(host::Reachability reachability) {
    switch (reachability) {
    case host::Reachability::NotReachable:
        return GADNetworkType::NotReachable;
    case host::Reachability::WiFi:
        return GADNetworkType::WiFi;
    case host::Reachability::Cellular:
        return GADNetworkType::Cellular;
    case host::Reachability::Unknown:
        break;
    }
    return GADNetworkType::Unknown;
}

}

GADNetworkChecker& GADNetworkChecker::sharedChecker() {
    if (!shared()) {
        shared().reset(new GADNetworkChecker());
        shared()->setEnabled(true);
    }
    return *shared();
}

void GADNetworkChecker::releaseSharedChecker() {
    shared().reset();
}

GADNetworkChecker::~GADNetworkChecker() {
    setEnabled(false);
}

void GADNetworkChecker::setEnabled(bool enabled) {
    if (enabled == enabled_)
        return;
    enabled_ = enabled;
    networkType_ = GADNetworkType::Unknown;
    host::Network& network = *host::current().network;
    if (enabled)
        network.watchReachability(
            gadSettingValue(kGADReachabilityHost),
            [this](host::Reachability reachability) { report(reachability); });
    else
        network.watchReachability({}, nullptr);
}

std::optional<std::string> GADNetworkChecker::networkTypeString() const {
    if (networkType_ == GADNetworkType::WiFi)
        return "wi";
    if (networkType_ == GADNetworkType::Cellular)
        return "ed";
    return std::nullopt;
}

void GADNetworkChecker::report(host::Reachability reachability) {
    ++changeCount_;
    networkType_ = typeOf(reachability);
}

}
