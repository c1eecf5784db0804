#pragma once
#include "platform/foundation/NSError.h"
#include "platform/host/Files.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace vistrel {

/// One open file. The destructor closes it if nothing else has.
class NSFileHandle {
public:
    /// For reading and writing; null when the file cannot be opened.
    static std::shared_ptr<NSFileHandle> fileHandleForUpdatingAtPath(const std::string& path);
    ~NSFileHandle();

    void seekToEndOfFile();
    /// What went wrong (a full disk), or nothing.
    [[nodiscard]] std::optional<NSError> writeData(std::span<const std::byte> data);
    /// Closing reports what a delayed write could not store.
    std::optional<NSError> closeFile();

private:
    explicit NSFileHandle(std::unique_ptr<host::FileStream> stream);
    std::unique_ptr<host::FileStream> stream_;
};

}
