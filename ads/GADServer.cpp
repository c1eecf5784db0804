#include "ads/GADServer.h"

#include "ads/GADSettings.h"
#include "platform/foundation/NSURL.h"

#include <string>

namespace vistrel {

namespace {
std::string hostAndPort(const NSURL& address) {
    const std::string name = address.host();
    const std::string host = name.find(':') == std::string::npos ? name : "[" + name + "]";
    const auto port = address.port();
    return port ? host + ":" + std::to_string(*port) : host;
}
}

bool isGADServer(const NSURL& address) {
    const std::string origin = "http://" + hostAndPort(address);
    return !address.host().empty() &&
           (address.absoluteString() == origin || address.absoluteString() == origin + "/");
}

void useGADServer(const NSURL& address) {
    overrideGADSetting(kGADStaticContentHost, hostAndPort(address));
    overrideGADSetting(kGADAdServerOrigin, "http://" + hostAndPort(address));
    overrideGADSetting(kGADReachabilityHost, address.host());
    overrideGADSetting(kGADClickServerDomain, address.host());
}

}
