#pragma once
#include "platform/foundation/NSURL.h"

#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace vistrel {
class GADWebView;

/// What a host may demand of ad pages, which are strangers' pages: the page engine cannot tell an
/// ad's own page from a frame in it, so every caller is taken for hostile. Without a policy, which
/// is the default, pages may do whatever the bridge offers.
///
/// With one, whatever leads out of an ad needs a touch on that ad since it was shown, not longer
/// ago than `touchLifetime`; addresses that leave have one of the allowed schemes; and the bridge
/// knows no names but its own. Each refusal is one line in the log.
class GADSafetyPolicy {
public:
    /// Seconds for which a touch permits what follows from it.
    double touchLifetime = 3;
    /// In lower case.
    std::set<std::string, std::less<>> allowedSchemes{"http", "https", "mailto", "tel"};

    /// The policy in force for the whole process; nothing ends it.
    static void setShared(std::optional<GADSafetyPolicy> policy);

    /// Whether the page may do what leads out of it; `url` null: to no address.
    static bool permitsLeaving(const GADWebView& webView, std::string_view action,
                               const NSURL* url);
    /// Whether the bridge forwards a name that is not one of its commands.
    static bool permitsForwarding(std::string_view name);
};

}
