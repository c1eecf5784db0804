#include "ads/Opener/GADSafetyPolicy.h"

#include "ads/Utility/GADTextUtilities.h"
#include "ads/View/GADWebView.h"
#include "platform/foundation/NSLog.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vistrel {

namespace {

std::optional<GADSafetyPolicy>& shared() {
    static std::optional<GADSafetyPolicy> policy;
    return policy;
}

/// The commands that the library itself observes.
constexpr std::array<std::string_view, 4> kForwardedNames{"loadAdURL", "invalidRequest",
                                                          "unableToServe", "settings"};

bool refuse(std::string_view action, const NSURL* url, std::string_view reason) {
    constexpr std::size_t mostCharacters = 120;
    std::string line = "<GAD> Refused \"" + gadLogText(action, mostCharacters) + "\"";
    if (url)
        line += " to " + gadLogText(url->absoluteString(), mostCharacters);
    NSLog(line + ": " + std::string(reason));
    return false;
}

}

void GADSafetyPolicy::setShared(std::optional<GADSafetyPolicy> policy) {
    shared() = std::move(policy);
}

bool GADSafetyPolicy::permitsLeaving(const GADWebView& webView, std::string_view action,
                                     const NSURL* url) {
    const auto& policy = shared();
    if (!policy)
        return true;
    if (url && !policy->allowedSchemes.contains(gadLowerCased(url->scheme())))
        return refuse(action, url, "the scheme is not allowed.");
    const auto sinceTouch = webView.secondsSinceTouch();
    if (!sinceTouch)
        return refuse(action, url, "the ad has not been touched.");
    if (*sinceTouch > policy->touchLifetime)
        return refuse(action, url, "the last touch is too long ago.");
    return true;
}

bool GADSafetyPolicy::permitsForwarding(std::string_view name) {
    return !shared() || std::ranges::find(kForwardedNames, name) != kForwardedNames.end() ||
           refuse(name, nullptr, "the bridge has no such command.");
}

}
