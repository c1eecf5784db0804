#pragma once
#include <memory>
#include <optional>
#include <string>

using GKeyFile = struct _GKeyFile;

namespace vistrel {

/// The user's key file of settings, read once. A file that is missing sets nothing; one that cannot
/// be read is said in the log.
class SettingsFile {
public:
    explicit SettingsFile(const std::string& machinePath);
    ~SettingsFile();

    std::optional<std::string> value(const std::string& group, const std::string& key) const;
    /// Why the file could not be read; empty when all is well.
    const std::string& complaint() const { return complaint_; }

private:
    GKeyFile* file_;
    std::string complaint_;
};

}
