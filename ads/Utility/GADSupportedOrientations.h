#pragma once
#include <string_view>

namespace vistrel {

/// The orientations in which an ad's full-screen content may be shown, with the library's numbers.
enum class GADSupportedOrientations : int { None = 0, Any = 1, Portrait = 2, Landscape = 3 };

/// "any", "portrait" or "landscape", exactly; None for anything else.
constexpr GADSupportedOrientations gadSupportedOrientationsFromString(std::string_view text) {
    if (text == "any")
        return GADSupportedOrientations::Any;
    if (text == "portrait")
        return GADSupportedOrientations::Portrait;
    return text == "landscape" ? GADSupportedOrientations::Landscape
                               : GADSupportedOrientations::None;
}

}
