#include "platform/linux/files/TreeRemoval.h"

#include "platform/linux/files/DirectoryListing.h"
#include "platform/linux/files/FileDescriptor.h"
#include "platform/linux/files/PosixFailure.h"

#include <fcntl.h>

#include <cerrno>

namespace vistrel {

namespace {
/// Folders nest by open descriptors: deeper than this is left in place.
constexpr int kDeepest = 500;

host::Status removeTreeAtDepth(int folder, const std::string& name, int depth) {
    if (::unlinkat(folder, name.c_str(), 0) == 0)
        return host::Done{};
    if (errno != EISDIR && errno != EPERM)
        return lastPosixFailure();
    if (depth > kDeepest)
        return posixFailure(ELOOP);
    const FileDescriptor inner(
        ::openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!inner.isOpen())
        return lastPosixFailure();
    const auto names = namesInDirectory(inner.number());
    if (!names)
        return names.failure();
    for (const std::string& each : names.value())
        if (auto removed = removeTreeAtDepth(inner.number(), each, depth + 1); !removed)
            return removed;
    if (::unlinkat(folder, name.c_str(), AT_REMOVEDIR) != 0)
        return lastPosixFailure();
    return host::Done{};
}
}

host::Status removeTree(int folder, const std::string& name) {
    return removeTreeAtDepth(folder, name, 0);
}

}
