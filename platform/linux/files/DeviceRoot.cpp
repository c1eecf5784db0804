#include "platform/linux/files/DeviceRoot.h"

#include "platform/linux/files/DeviceFiles.h"
#include "platform/linux/files/PosixFailure.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace vistrel {

namespace {

constexpr const char* kShippedFolders[] = {
    "/var/mobile/Documents", "/var/mobile/Library/Caches", "/var/mobile/Library/Preferences",
    "/var/mobile/Media",     "/var/root/Library",          "/tmp",
};

std::string valueOf(const char* variable) {
    const char* value = std::getenv(variable);
    return value ? value : "";
}

}

std::string defaultDeviceRoot() {
    std::string data = valueOf("XDG_DATA_HOME");
    // Relative paths in it count as absent.
    if (!data.starts_with('/'))
        data = valueOf("HOME") + "/.local/share";
    return data + "/vistrel/device";
}

host::Status prepareDeviceRoot(const std::string& root) {
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(root).parent_path(), error);
    // What a person downloads is nobody else's business.
    if (::mkdir(root.c_str(), 0700) != 0 && errno != EEXIST)
        return lastPosixFailure();
    DeviceFiles files(root);
    for (const char* folder : kShippedFolders)
        if (auto created = files.createDirectory(folder, true); !created)
            return created;
    return host::Done{};
}

}
