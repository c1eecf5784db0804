#include "ads/Opener/GADOpenParameters.h"

#include "ads/Utility/GADTextUtilities.h"

namespace vistrel {

namespace {

GADSupportedOrientations orientationsFromParameter(const std::string& text) {
    if (text == "p")
        return GADSupportedOrientations::Portrait;
    return text == "l" ? GADSupportedOrientations::Landscape : GADSupportedOrientations::Any;
}

GADOpenParameters::Target targetOfAction(const std::string& action) {
    if (action == "browser" || action == "video")
        return GADOpenParameters::Target::Browser;
    return action == "webapp" ? GADOpenParameters::Target::WebApp
                              : GADOpenParameters::Target::Application;
}

}

GADOpenParameters GADOpenParameters::fromDictionary(const Value::Dictionary& parameters) {
    const std::string action = gadTextForKey("a", parameters);
    GADOpenParameters open;
    open.orientations = orientationsFromParameter(gadTextForKey("o", parameters));
    open.url = NSURL::URLWithString(gadTextForKey("u", parameters));
    if (open.url) {
        open.target = targetOfAction(action);
    } else if (action == "webapp" && parameters.contains("html")) {
        open.target = Target::HTML;
        open.html = gadTextForKey("html", parameters);
    }
    return open;
}

}
