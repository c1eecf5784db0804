#include "ads/GADSettings.h"

#include "platform/host/Host.h"

#include <map>
#include <utility>

namespace vistrel {

namespace {
std::map<std::string, std::string>& overrides() {
    static std::map<std::string, std::string> values;
    return values;
}
}

std::string gadSettingValue(const GADSetting& setting) {
    const auto found = overrides().find(setting.key);
    if (found != overrides().end())
        return found->second;
    const auto& fromFile = host::current().setting;
    const auto value = fromFile ? fromFile("ads", setting.key) : std::nullopt;
    return value.value_or(setting.defaultValue);
}

void overrideGADSetting(const GADSetting& setting, std::string value) {
    if (value.empty())
        overrides().erase(setting.key);
    else
        overrides()[setting.key] = std::move(value);
}

}
