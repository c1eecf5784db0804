#pragma once
#include "platform/host/Preferences.h"

#include <string>

namespace vistrel {

/// The user-defaults store as one property list of the machine.
class PlistPreferences : public host::Preferences {
public:
    /// Machine path; its folder is made when the first save needs it.
    explicit PlistPreferences(std::string path);

    /// A store that cannot be understood is put aside under ".damaged" and reported.
    host::Result<Value> load() override;
    host::Status save(const Value& dictionary) override;
    host::Result<Value> readPropertyList(const std::string& machinePath) override;

private:
    std::string path_;
};

}
