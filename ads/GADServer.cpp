#include "ads/GADServer.h"

#include "ads/GADSettings.h"
#include "platform/foundation/NSURL.h"

namespace vistrel {

void useGADServer(const NSURL& origin) {
    const std::string& text = origin.absoluteString();
    const auto begin = text.find("//") + 2;
    const std::string host = text.substr(begin, text.find('/', begin) - begin);
    overrideGADSetting(kGADStaticContentHost, host);
    overrideGADSetting(kGADAdServerOrigin, text.substr(0, begin) + host);
    overrideGADSetting(kGADReachabilityHost, origin.host());
    overrideGADSetting(kGADClickServerDomain, origin.host());
}

}
