#include "platform/foundation/NSBundle.h"

#include "platform/foundation/NSLog.h"
#include "platform/host/Host.h"
#include "platform/host/Preferences.h"

#include <filesystem>
#include <system_error>

namespace vistrel {

NSBundle& NSBundle::mainBundle() {
    static NSBundle bundle;
    return bundle;
}

std::string NSBundle::pathForResourceOfType(std::string_view name, std::string_view type) const {
    std::string path = host::current().resourcePath + "/" + std::string(name);
    if (!type.empty())
        path += "." + std::string(type);
    std::error_code ignored;
    return std::filesystem::exists(path, ignored) ? path : std::string();
}

const Value& NSBundle::infoDictionary() {
    if (infoRead_)
        return info_;
    infoRead_ = true;
    info_ = Value(Value::Dictionary());
    const std::string path = pathForResourceOfType("Info", "plist");
    if (path.empty())
        return info_;
    auto list = host::current().preferences->readPropertyList(path);
    if (list && list.value().isDictionary())
        info_ = std::move(list.value());
    else
        NSLog("Info.plist cannot be read" + (list ? "" : ": " + list.failure().message));
    return info_;
}

std::string NSBundle::localizedStringForKeyValue(const std::string& key,
                                                 const std::string& value) const {
    const auto& translate = host::current().translate;
    std::string translation = translate ? translate(key) : std::string();
    if (!translation.empty())
        return translation;
    return value.empty() ? key : value;
}

std::string NSLocalizedString(const std::string& key) {
    return NSBundle::mainBundle().localizedStringForKeyValue(key);
}

}
