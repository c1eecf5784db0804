#pragma once
#include "platform/foundation/NSURL.h"

#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace vistrel {
class GADWebView;

/// Restrictions that a host may impose on ad pages. The page engine cannot tell an ad's own page
/// from a frame in it, so every caller is treated as hostile. By default there is no policy, and
/// pages may use everything the bridge offers.
///
/// With a policy, an action that leads out of an ad requires a touch on the ad, since it was shown,
/// within the last `touchLifetime` seconds; addresses that lead out must have one of the allowed
/// schemes; and the bridge accepts only its own commands. Each refusal logs one line.
class GADSafetyPolicy {
public:
    /// Seconds for which a touch permits actions.
    double touchLifetime = 3;
    /// In lower case.
    std::set<std::string, std::less<>> allowedSchemes{"http", "https", "mailto", "tel"};

    /// The process-wide policy; std::nullopt for none.
    static void setShared(std::optional<GADSafetyPolicy> policy);

    /// Whether the page may lead out of the ad; `url` is null when no address is involved.
    static bool permitsLeaving(const GADWebView& webView, std::string_view action,
                               const NSURL* url);
    /// Whether the bridge forwards a name that is not one of its commands.
    static bool permitsForwarding(std::string_view name);
};

}
