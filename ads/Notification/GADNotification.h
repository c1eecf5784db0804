#pragma once
#include "platform/foundation/NSURL.h"
#include "platform/foundation/Value.h"

#include <optional>
#include <string>
#include <utility>

namespace vistrel {

/// A command that an ad page gives by navigating to a bridge address: a name and parameters.
class GADNotification {
public:
    /// Whether the address belongs to either family of bridge addresses.
    static bool isNotificationURL(const NSURL& url);
    static bool isGMSGNotificationURL(const NSURL& url);
    static bool isGrokrufNotificationURL(const NSURL& url);

    /// Nothing for any other address, and for a bridge address with an unknown command.
    static std::optional<GADNotification> notificationFromURL(const NSURL& url);

    /// Empty when it is not UTF-8.
    const std::string& name() const { return name_; }
    const Value::Dictionary& parameters() const { return parameters_; }
    std::string description() const;

private:
    GADNotification(std::string name, Value::Dictionary parameters)
        : name_(std::move(name))
        , parameters_(std::move(parameters)) {}
    static std::optional<GADNotification> notificationFromGrokrufURL(const NSURL& url);

    std::string name_;
    Value::Dictionary parameters_;
};

}
