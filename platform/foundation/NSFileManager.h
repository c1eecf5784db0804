#pragma once
#include "platform/foundation/NSError.h"
#include "platform/host/Files.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vistrel {

/// Files by absolute device path.
class NSFileManager {
public:
    static NSFileManager& defaultManager();

    /// The names, or why the folder cannot be read.
    struct Listing {
        std::vector<std::string> names;
        std::optional<NSError> error;
    };
    /// Shallow, in the order in which the folder returns the names, without "." and "..".
    Listing contentsOfDirectoryAtPath(const std::string& path);
    /// Follows links.
    bool fileExistsAtPath(const std::string& path);
    std::optional<host::FileInfo> attributesOfItemAtPath(const std::string& path);
    /// Each returns what went wrong, or nothing.
    std::optional<NSError> createDirectoryAtPath(const std::string& path,
                                                 bool withIntermediateDirectories);
    /// Whole or not at all; fails, leaving the file where it is, when the target exists.
    std::optional<NSError> moveItemAtPathToPath(const std::string& from, const std::string& to);
    std::optional<NSError> removeItemAtPath(const std::string& path);
    /// An empty file (or one with `contents`), replacing a file of the same name; whether it
    /// succeeded.
    bool createFileAtPath(const std::string& path, std::span<const std::byte> contents = {});
    std::optional<std::vector<std::byte>> contentsAtPath(const std::string& path);
    std::optional<NSError> writeAtomicallyToPath(const std::string& path,
                                                 std::span<const std::byte> bytes);
    /// Access and modification time, seconds since 1970-01-01 UTC.
    std::optional<NSError> setModificationTimeOfItemAtPath(const std::string& path, double seconds);
};

}
