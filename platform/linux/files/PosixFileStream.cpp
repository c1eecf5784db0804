#include "platform/linux/files/PosixFileStream.h"

#include "platform/linux/files/PosixFailure.h"

#include <sys/stat.h>

#include <cerrno>
#include <utility>

namespace vistrel {

host::Status writeAll(int file, std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return lastPosixFailure();
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return host::Done{};
}

host::Result<std::vector<std::byte>> readAll(int file) {
    struct stat attributes {};
    if (::fstat(file, &attributes) != 0)
        return lastPosixFailure();
    // One byte more than the size: the end shows itself without growing the buffer.
    std::vector<std::byte> bytes(static_cast<std::size_t>(attributes.st_size) + 1);
    std::size_t filled = 0;
    for (;;) {
        const ssize_t size = ::read(file, bytes.data() + filled, bytes.size() - filled);
        if (size < 0 && errno == EINTR)
            continue;
        if (size < 0)
            return lastPosixFailure();
        if (size == 0)
            break;
        filled += static_cast<std::size_t>(size);
        if (filled == bytes.size())
            bytes.resize(bytes.size() * 2);
    }
    bytes.resize(filled);
    return bytes;
}

PosixFileStream::PosixFileStream(FileDescriptor file)
    : file_(std::move(file)) {}

host::Result<std::int64_t> PosixFileStream::seekToEnd() {
    const off_t position = ::lseek(file_.number(), 0, SEEK_END);
    if (position < 0)
        return lastPosixFailure();
    return static_cast<std::int64_t>(position);
}

host::Status PosixFileStream::write(std::span<const std::byte> bytes) {
    return writeAll(file_.number(), bytes);
}

host::Status PosixFileStream::close() {
    // The number is gone even when closing fails.
    if (::close(file_.release()) != 0 && errno != EINTR)
        return lastPosixFailure();
    return host::Done{};
}

}
