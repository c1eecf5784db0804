#pragma once
#include "ads/Utility/GADSupportedOrientations.h"
#include "platform/foundation/NSURL.h"
#include "platform/foundation/Value.h"

#include <optional>
#include <string>

namespace vistrel {

/// What an ad page wants to open, from a bridge command's parameters: "a" is how, "u" or "html"
/// what, "o" the orientation.
struct GADOpenParameters {
    enum class Target {
        Nothing,
        Browser,     ///< `url`
        WebApp,      ///< `url`
        HTML,        ///< a web app of `html`
        Application, ///< `url`, by the system
    };

    static GADOpenParameters fromDictionary(const Value::Dictionary& parameters);

    Target target = Target::Nothing;
    std::optional<NSURL> url;
    std::string html;
    GADSupportedOrientations orientations = GADSupportedOrientations::Any;
};

}
