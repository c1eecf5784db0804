#include "ads/Network/GADNetworkUtilities.h"
#include "ads/Notification/GADNotification.h"
#include "ads/Opener/GADOpenParameters.h"
#include "fuzz/Check.h"
#include "platform/foundation/UTF8Text.h"

#include <cstdint>
#include <string>

namespace {
using namespace vistrel;
using Target = GADOpenParameters::Target;

void checkOpening(const GADNotification& notification) {
    const auto open = GADOpenParameters::fromDictionary(notification.parameters());
    const bool needsURL = open.target != Target::Nothing && open.target != Target::HTML;
    fuzz::check(open.url.has_value() == needsURL, "there is an address exactly when it is opened");
    fuzz::check(open.html.empty() || open.target == Target::HTML, "only a web app has HTML");
    fuzz::check(open.orientations != GADSupportedOrientations::None, "a screen can be shown");
}

/// The same command, written again.
NSURL urlOf(const GADNotification& notification) {
    std::string text = "gmsg://ads/" + GADNetworkUtilities::encodeURL(notification.name()) + "?";
    for (const auto& [key, value] : notification.parameters())
        text += '&' + GADNetworkUtilities::encodeURL(key) + '=' +
                GADNetworkUtilities::encodeURL(value.string());
    const auto url = NSURL::URLWithString(text);
    fuzz::check(url.has_value(), "a command can be written");
    return *url;
}

void checkURL(std::string_view text) {
    const auto url = NSURL::URLWithString(text);
    if (!url)
        return;
    const auto notification = GADNotification::notificationFromURL(*url);
    if (GADNotification::isGMSGNotificationURL(*url) || !notification) {
        fuzz::check(notification.has_value() == GADNotification::isGMSGNotificationURL(*url),
                    "one family always asks for something");
    } else {
        fuzz::check(GADNotification::isGrokrufNotificationURL(*url), "other addresses do not");
        const std::string& name = notification->name();
        fuzz::check(name == "open" || name == "close" || name == "log", "the other has three");
        fuzz::check(name != "open" || notification->parameters().find("a")->string() == "browser",
                    "and opens the browser only");
    }
    if (!notification)
        return;
    checkOpening(*notification);
    fuzz::check(isUTF8(notification->name()), "the name is text");
    const auto again = GADNotification::notificationFromURL(urlOf(*notification));
    fuzz::check(again && again->name() == notification->name() &&
                    again->parameters() == notification->parameters(),
                "a command survives");
}
}

/// Addresses by which an ad's page sends commands, from parsing to what is opened.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    checkURL(text);
    checkURL("gmsg://ads/open?" + text);
    checkURL("grokruf://launch?" + text);
    return 0;
}
