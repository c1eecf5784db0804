#pragma once
#include "ads/Utility/GADSupportedOrientations.h"
#include "platform/foundation/NSURL.h"
#include "platform/foundation/NSURLResponse.h"

#include <optional>
#include <vector>

namespace vistrel {

/// The information about an ad in the header fields of its response. Missing and empty fields are
/// treated alike; invalid addresses are left out.
struct GADAdHeaders {
    static GADAdHeaders fromFields(const NSURLResponse::HeaderFields& fields);

    /// Requested when the ad is shown.
    std::vector<NSURL> trackingURLs;
    /// Requested when a click has opened something.
    std::vector<NSURL> clickURLs;
    /// Of the screens that the ad opens; None when the server does not specify it.
    GADSupportedOrientations orientations = GADSupportedOrientations::None;
    /// Seconds to wait for the next start-up interstitial.
    std::optional<float> interstitialTimeout;
    /// Seconds until the next ad; 0 or less starts no interval now. The last one begins again all
    /// the same when the application returns or an ad's screen closes.
    std::optional<float> refreshRate;
};

}
