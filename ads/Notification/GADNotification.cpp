#include "ads/Notification/GADNotification.h"

#include "ads/Network/GADNetworkUtilities.h"
#include "ads/Utility/GADTextualDescription.h"
#include "platform/foundation/UTF8Text.h"

namespace vistrel {

bool GADNotification::isNotificationURL(const NSURL& url) {
    return isGMSGNotificationURL(url) || isGrokrufNotificationURL(url);
}

bool GADNotification::isGMSGNotificationURL(const NSURL& url) {
    return url.scheme() == "gmsg";
}

bool GADNotification::isGrokrufNotificationURL(const NSURL& url) {
    return url.scheme() == "grokruf";
}

std::optional<GADNotification> GADNotification::notificationFromURL(const NSURL& url) {
    if (isGrokrufNotificationURL(url))
        return notificationFromGrokrufURL(url);
    if (!isGMSGNotificationURL(url))
        return std::nullopt;
    std::string name = url.path();
    if (name.starts_with('/'))
        name.erase(0, 1);
    if (!isUTF8(name))
        name.clear();
    return GADNotification(std::move(name),
                           GADNetworkUtilities::dictionaryFromQueryString(url.query()));
}

std::optional<GADNotification> GADNotification::notificationFromGrokrufURL(const NSURL& url) {
    const std::string host = url.host();
    if (host == "closecanvas")
        return GADNotification("close", {});
    auto parameters = GADNetworkUtilities::dictionaryFromQueryString(url.query());
    if (host == "log")
        return GADNotification("log", std::move(parameters));
    if (host != "launch")
        return std::nullopt;
    Value::Dictionary open{{"a", "browser"}};
    if (const Value* target = parameters.find("url"))
        open.set("u", *target);
    return GADNotification("open", std::move(open));
}

std::string GADNotification::description() const {
    return "GADNotification<" + gadAddressText(this) + ">: name:" + name_ +
           " parameters:" + gadTextualDescription(parameters_);
}

}
