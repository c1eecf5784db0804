#pragma once
#include "platform/host/Files.h"
#include "platform/linux/files/FileDescriptor.h"

namespace vistrel {

/// Writes all bytes, in as many calls as it takes.
[[nodiscard]] host::Status writeAll(int file, std::span<const std::byte> bytes);
/// Everything from the start of an open regular file.
[[nodiscard]] host::Result<std::vector<std::byte>> readAll(int file);

/// One regular file of the machine, open for reading and writing.
class PosixFileStream : public host::FileStream {
public:
    explicit PosixFileStream(FileDescriptor file);

    host::Result<std::int64_t> seekToEnd() override;
    host::Status write(std::span<const std::byte> bytes) override;
    host::Status close() override;

private:
    FileDescriptor file_;
};

}
