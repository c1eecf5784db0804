#pragma once
#include "platform/foundation/Value.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vistrel {

/// What observers receive: a name, the sender (compared by address only), and user info.
struct NSNotification {
    std::string name;
    const void* object = nullptr;
    Value userInfo;
};

/// Delivers each posted notification to the observers of its name, synchronously, in the order of
/// registration. Handlers may add and remove observers; a removed one is no longer
/// called.
class NSNotificationCenter {
public:
    using Handler = std::function<void(const NSNotification&)>;

    static NSNotificationCenter& defaultCenter();

    /// `observer` identifies the registration for removal and is not retained; it must remove
    /// itself before it is destroyed. `object` null: from any sender.
    void addObserver(const void* observer, const std::string& name, const void* object,
                     Handler handler);
    /// Empty name: all names. Null object: all senders.
    void removeObserver(const void* observer, const std::string& name = {},
                        const void* object = nullptr);
    void postNotification(const std::string& name, const void* object = nullptr,
                          Value userInfo = {});

private:
    struct Registration;
    std::vector<std::shared_ptr<Registration>> registrations_;
};

}
