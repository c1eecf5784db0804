#pragma once
#include "platform/host/Result.h"
#include "platform/linux/files/FileDescriptor.h"

#include <string>

namespace vistrel {

/// Opens device paths below a folder of the machine as if that folder were the root directory: no
/// "..", no link and no link's target leads out of it.
class PathResolver {
public:
    /// How paths are walked. Kernels and sandboxes without openat2 leave the walk by components,
    /// which follows no links at all.
    enum class Walk { ByKernel, ByComponents };

    explicit PathResolver(const std::string& root, Walk walk = Walk::ByKernel);

    /// Opens what has the path, with flags of open(2).
    [[nodiscard]] host::Result<FileDescriptor> open(const std::string& path, int flags) const;

    /// The folder that holds the last component, and that component; fails where none can be (the
    /// root itself, "." and "..").
    struct Place {
        FileDescriptor folder;
        std::string name;
    };
    [[nodiscard]] host::Result<Place> placeOf(const std::string& path) const;

private:
    [[nodiscard]] host::Result<FileDescriptor> walkByComponents(const std::string& path,
                                                                int flags) const;

    FileDescriptor root_;
    Walk walk_;
};

}
