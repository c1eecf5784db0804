#include "platform/linux/files/DirectoryListing.h"

#include "platform/linux/files/PosixFailure.h"

#include <dirent.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <memory>

namespace vistrel {

namespace {
/// A folder of 1,000 names comes in one call.
constexpr std::size_t kBufferSize = std::size_t{64} * 1024;
/// What an entry takes up in the folder's own size on common file systems, at least.
constexpr std::int64_t kSmallestEntry = 32;
constexpr std::int64_t kMostExpected = 1'000'000;

/// Room for so many names: growing a long list touches every page of it again and again.
std::size_t expectedNames(int folder) {
    struct stat attributes {};
    if (::fstat(folder, &attributes) != 0)
        return 0;
    return static_cast<std::size_t>(
        std::clamp<std::int64_t>(attributes.st_size / kSmallestEntry, 0, kMostExpected));
}

bool isSelfOrParent(const char* name) {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}
}

host::Result<std::vector<std::string>> namesInDirectory(int folder) {
    const auto buffer = std::make_unique_for_overwrite<char[]>(kBufferSize);
    std::vector<std::string> names;
    names.reserve(expectedNames(folder));
    for (;;) {
        const long size = ::syscall(SYS_getdents64, folder, buffer.get(), kBufferSize);
        if (size < 0)
            return lastPosixFailure();
        if (size == 0)
            return names;
        for (long at = 0; at < size;) {
            const auto* entry = reinterpret_cast<const dirent64*>(buffer.get() + at);
            if (!isSelfOrParent(entry->d_name))
                names.emplace_back(entry->d_name);
            at += entry->d_reclen;
        }
    }
}

}
