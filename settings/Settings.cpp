#include "settings/Settings.h"

#include "platform/host/Host.h"

#include <map>
#include <utility>

namespace vistrel {

namespace {

using Place = std::pair<std::string, std::string>;

std::map<Place, std::string>& overrides() {
    static std::map<Place, std::string> values;
    return values;
}

}

std::string settingValue(const Setting& setting) {
    const auto found = overrides().find({setting.group, setting.key});
    if (found != overrides().end())
        return found->second;
    const auto& fromFile = host::current().setting;
    if (fromFile) {
        const auto value = fromFile(setting.group, setting.key);
        if (value && !value->empty())
            return *value;
    }
    return setting.defaultValue;
}

void overrideSetting(const Setting& setting, std::string value) {
    overrides()[{setting.group, setting.key}] = std::move(value);
}

std::string contentSiteAddress(const std::string& path) {
    std::string base = settingValue(kContentSiteBaseURL);
    while (!base.empty() && base.back() == '/')
        base.pop_back();
    return base + path;
}

}
