#include "platform/foundation/NSFileHandle.h"

#include "platform/host/Host.h"

#include <cerrno>
#include <utility>

namespace vistrel {

namespace {
std::optional<NSError> errorOf(const host::Status& status) {
    if (status)
        return std::nullopt;
    return NSError(NSPOSIXErrorDomain, status.failure().code, status.failure().message);
}
}

NSFileHandle::NSFileHandle(std::unique_ptr<host::FileStream> stream)
    : stream_(std::move(stream)) {}

NSFileHandle::~NSFileHandle() = default;

std::shared_ptr<NSFileHandle> NSFileHandle::fileHandleForUpdatingAtPath(const std::string& path) {
    auto stream = host::current().files->openForUpdating(path);
    if (!stream)
        return nullptr;
    return std::shared_ptr<NSFileHandle>(new NSFileHandle(std::move(stream.value())));
}

void NSFileHandle::seekToEndOfFile() {
    if (stream_)
        (void)stream_->seekToEnd();
}

std::optional<NSError> NSFileHandle::writeData(std::span<const std::byte> data) {
    if (!stream_)
        return NSError(NSPOSIXErrorDomain, EBADF, "The file is closed.");
    return errorOf(stream_->write(data));
}

std::optional<NSError> NSFileHandle::closeFile() {
    if (!stream_)
        return std::nullopt;
    return errorOf(std::exchange(stream_, nullptr)->close());
}

}
