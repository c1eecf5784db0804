#pragma once
#include <memory>
#include <optional>
#include <string>

using GKeyFile = struct _GKeyFile;

namespace vistrel {

/// The user's key file of settings, read once. A file that is missing sets nothing.
class SettingsFile {
public:
    explicit SettingsFile(const std::string& machinePath);
    ~SettingsFile();

    std::optional<std::string> value(const std::string& group, const std::string& key) const;
    /// Why the file could not be read, or is no key file; otherwise empty.
    const std::string& complaint() const { return complaint_; }

private:
    GKeyFile* file_;
    std::string complaint_;
};

}
