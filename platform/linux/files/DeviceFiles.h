#pragma once
#include "platform/host/Files.h"
#include "platform/linux/files/PathResolver.h"

#include <string>

namespace vistrel {

/// The device's files in a folder of the machine, the device root.
class DeviceFiles : public host::Files {
public:
    /// The root must exist; see DeviceRoot.h.
    explicit DeviceFiles(const std::string& root,
                         PathResolver::Walk walk = PathResolver::Walk::ByKernel);

    host::Result<std::vector<std::string>> list(const std::string& path) override;
    host::Result<host::FileInfo> info(const std::string& path) override;
    host::Status createDirectory(const std::string& path, bool withIntermediates) override;
    host::Status createFile(const std::string& path) override;
    host::Result<std::unique_ptr<host::FileStream>>
    openForUpdating(const std::string& path) override;
    host::Status move(const std::string& from, const std::string& to) override;
    host::Status remove(const std::string& path) override;
    host::Result<std::vector<std::byte>> read(const std::string& path) override;
    host::Status writeAtomically(const std::string& path,
                                 std::span<const std::byte> bytes) override;
    host::Status setTimes(const std::string& path, double seconds) override;
    /// ".." stops at the root.
    std::string machinePath(const std::string& path) const override;

private:
    [[nodiscard]] host::Result<FileDescriptor> openRegularFile(const std::string& path,
                                                               int flags) const;

    std::string root_;
    PathResolver resolver_;
};

}
