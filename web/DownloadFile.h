#pragma once
#include "platform/foundation/NSError.h"
#include "web/DownloadableMedia.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace vistrel {
class NSFileHandle;

/// The file of one download. Its name is reserved for as long as this lives: another download of
/// the same name that runs at the same time gets a different one.
class DownloadFile {
public:
    enum class Existing { Replace, Keep };
    /// Whether a download that is not finished has the name.
    static bool isReserved(const std::string& name);
    /// Whether neither a download nor a file has the name.
    static bool isFree(const std::string& name);
    /// The name, or the first of "name 2", "name 3" … that is free, before the extension.
    DownloadFile(const std::string& suggestedName, Existing existing);
    ~DownloadFile();
    DownloadFile(const DownloadFile&) = delete;
    DownloadFile& operator=(const DownloadFile&) = delete;

    const std::string& name() const { return name_; }
    std::string path() const { return kDownloadsFolder + name_; }
    /// Bytes on the disk; nothing if the file does not exist.
    std::optional<std::int64_t> size() const;

    /// Creates an empty file, replacing any file of that name; returns whether it succeeded.
    bool create();
    /// Opens the existing file for appending.
    bool open();
    bool isOpen() const { return handle_ != nullptr; }
    /// Returns what went wrong, if anything. Does nothing while the file is not open.
    [[nodiscard]] std::optional<NSError> write(std::span<const std::byte> data);
    [[nodiscard]] std::optional<NSError> close();

private:
    std::string name_;
    std::shared_ptr<NSFileHandle> handle_;
};

}
