#pragma once
#include <string>

namespace vistrel {

/// A value that the ad vendor supplies: its key in the group "ads" of the settings file, and its
/// default. Hosts may include a port.
struct GADSetting {
    const char* key;
    const char* defaultValue;
};

/// Whether the application shows ads at all; "no" leaves them out.
inline constexpr GADSetting kGADEnabled{"enabled", "yes"};
/// Serves the request-building script, over plain HTTP. Empty: there is no ad server, and no ads
/// are requested.
inline constexpr GADSetting kGADStaticContentHost{"static-content-host", ""};
/// Origin of the page in which that script runs.
inline constexpr GADSetting kGADAdServerOrigin{"ad-server-origin", "http://ads.vistrel.example"};
/// The host whose reachability determines the kind of network.
inline constexpr GADSetting kGADReachabilityHost{"reachability-host", "ads.vistrel.example"};
/// The domain of the hosts that count clicks.
inline constexpr GADSetting kGADClickServerDomain{"click-server-domain",
                                                  "clicks.ads.vistrel.example"};
/// The AES-128 key that the ad server shares, as 32 hexadecimal digits.
inline constexpr GADSetting kGADLocationKey{"location-key", "3f6b0d92a7c4581e94d2e80b7615fac3"};

/// Domain of the library's errors.
inline constexpr const char* kGADErrorDomain = "org.vistrel.ads.ErrorDomain";

/// The setting's value from overrideGADSetting, else from the settings file, else the default.
std::string gadSettingValue(const GADSetting& setting);
/// For command-line options and tests; lasts until the process ends. An empty value removes the
/// override.
void overrideGADSetting(const GADSetting& setting, std::string value);

}
