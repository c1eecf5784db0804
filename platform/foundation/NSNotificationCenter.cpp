#include "platform/foundation/NSNotificationCenter.h"

#include <utility>

namespace vistrel {

struct NSNotificationCenter::Registration {
    const void* observer;
    std::string name;
    const void* object;
    Handler handler;
    bool active = true;
};

NSNotificationCenter& NSNotificationCenter::defaultCenter() {
    static NSNotificationCenter center;
    return center;
}

void NSNotificationCenter::addObserver(const void* observer, const std::string& name,
                                       const void* object, Handler handler) {
    registrations_.push_back(
        std::make_shared<Registration>(Registration{observer, name, object, std::move(handler)}));
}

void NSNotificationCenter::removeObserver(const void* observer, const std::string& name,
                                          const void* object) {
    std::erase_if(
        registrations_,
        [&](const std::shared_ptr<Registration>& registration) {
            const bool matches = registration->observer == observer &&
                                 (name.empty() || registration->name == name) &&
                                 (!object || registration->object == object);
            if (matches)
                registration->active = false;
            return matches;
        });
}

void NSNotificationCenter::postNotification(const std::string& name, const void* object,
                                            Value userInfo) {
    const NSNotification notification{name, object, std::move(userInfo)};
    // Handlers may change the registrations, so this iterates over a copy.
    const std::vector<std::shared_ptr<Registration>> registrations = registrations_;
    for (const auto& registration : registrations) {
        if (!registration->active || registration->name != name)
            continue;
        if (registration->object && registration->object != object)
            continue;
        registration->handler(notification);
    }
}

}
