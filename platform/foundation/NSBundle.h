#pragma once
#include "platform/foundation/Value.h"

#include <string>
#include <string_view>

namespace vistrel {

/// The application's resources.
class NSBundle {
public:
    static NSBundle& mainBundle();

    /// Machine path of a resource, empty when missing. With an empty `type`, `name` is the whole
    /// file name.
    std::string pathForResourceOfType(std::string_view name, std::string_view type) const;
    /// Info.plist; an empty dictionary when missing.
    const Value& infoDictionary();
    /// The translation of `key` in the default table; without one, `value`, or `key` when that is
    /// empty.
    std::string localizedStringForKeyValue(const std::string& key,
                                           const std::string& value = {}) const;

private:
    Value info_;
    bool infoRead_ = false;
};

/// The main bundle's translation of `key`, or the key itself.
std::string NSLocalizedString(const std::string& key);

}
