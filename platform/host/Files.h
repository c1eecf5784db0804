#pragma once
#include "platform/host/Result.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace vistrel::host {

struct FileInfo {
    bool isDirectory = false;
    std::int64_t size = 0;       ///< bytes
    double modificationTime = 0; ///< seconds since 1970-01-01 UTC
};

/// One open file.
class FileStream {
public:
    virtual ~FileStream() = default;
    virtual Result<std::int64_t> seekToEnd() = 0;
    /// Writes all bytes or fails; a failure may leave a part of them.
    virtual Status write(std::span<const std::byte> bytes) = 0;
    virtual Status close() = 0;
};

/// The device's files. Paths are absolute device paths ("/var/mobile/Library/Downloads"); where
/// they are on the machine is up to the implementation. Names are bytes, not necessarily UTF-8.
class Files {
public:
    virtual ~Files() = default;

    /// Entry names without "." and "..", in the order in which the directory returns them.
    virtual Result<std::vector<std::string>> list(const std::string& path) = 0;
    /// Follows links.
    virtual Result<FileInfo> info(const std::string& path) = 0;
    virtual Status createDirectory(const std::string& path, bool withIntermediates) = 0;
    /// Creates an empty file, replacing any file of that name. Never follows a link, never makes it
    /// executable.
    virtual Status createFile(const std::string& path) = 0;
    /// Opens an existing regular file for reading and writing.
    virtual Result<std::unique_ptr<FileStream>> openForUpdating(const std::string& path) = 0;
    /// Moves completely or not at all, even across file systems; EEXIST when `to` exists.
    virtual Status move(const std::string& from, const std::string& to) = 0;
    /// Removes a file, or a directory with what is in it; links are removed, not followed.
    virtual Status remove(const std::string& path) = 0;
    virtual Result<std::vector<std::byte>> read(const std::string& path) = 0;
    /// After a crash at any moment the file has the old or the new content.
    virtual Status writeAtomically(const std::string& path, std::span<const std::byte> bytes) = 0;
    /// Sets access and modification time, in seconds since 1970-01-01 UTC.
    virtual Status setTimes(const std::string& path, double seconds) = 0;
    /// The machine's path of a device path, for players and other programs.
    virtual std::string machinePath(const std::string& path) const = 0;
};

}
