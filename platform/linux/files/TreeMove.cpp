#include "platform/linux/files/TreeMove.h"

#include "platform/linux/files/DirectoryListing.h"
#include "platform/linux/files/FileDescriptor.h"
#include "platform/linux/files/NewFile.h"
#include "platform/linux/files/PosixFailure.h"
#include "platform/linux/files/PosixFileStream.h"
#include "platform/linux/files/TreeRemoval.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <climits>
#include <memory>

namespace vistrel {

namespace {

constexpr std::size_t kCopySize = std::size_t{1024} * 1024;
constexpr int kDeepest = 200;

host::Status copyBytes(int from, int to) {
    for (;;) {
        const ssize_t copied = ::copy_file_range(from, nullptr, to, nullptr, kCopySize, 0);
        if (copied == 0)
            return host::Done{};
        if (copied < 0 && errno != EINTR)
            break;
    }
    if (errno != EXDEV && errno != EINVAL && errno != ENOSYS && errno != EOPNOTSUPP)
        return lastPosixFailure();
    const auto buffer = std::make_unique_for_overwrite<std::byte[]>(kCopySize);
    for (;;) {
        const ssize_t size = ::read(from, buffer.get(), kCopySize);
        if (size < 0 && errno == EINTR)
            continue;
        if (size < 0)
            return lastPosixFailure();
        if (size == 0)
            return host::Done{};
        auto written = writeAll(to, {buffer.get(), static_cast<std::size_t>(size)});
        if (!written)
            return written;
    }
}

host::Status copyTree(int fromFolder, const std::string& from, int toFolder, const std::string& to,
                      int depth);

host::Status copyFile(int fromFolder, const std::string& from, int toFolder, const std::string& to,
                      const struct stat& attributes) {
    const FileDescriptor source(
        ::openat(fromFolder, from.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!source.isOpen())
        return lastPosixFailure();
    auto copy = NewFile::createIn(toFolder);
    if (!copy)
        return copy.failure();
    if (auto copied = copyBytes(source.number(), copy.value().number()); !copied)
        return copied;
    const std::array<timespec, 2> times{attributes.st_atim, attributes.st_mtim};
    ::futimens(copy.value().number(), times.data());
    if (auto synced = copy.value().sync(); !synced)
        return synced;
    return copy.value().takeName(to);
}

host::Status copyLink(int fromFolder, const std::string& from, int toFolder,
                      const std::string& to) {
    std::array<char, PATH_MAX> target{};
    const ssize_t size = ::readlinkat(fromFolder, from.c_str(), target.data(), target.size() - 1);
    if (size < 0 || ::symlinkat(target.data(), toFolder, to.c_str()) != 0)
        return lastPosixFailure();
    return host::Done{};
}

host::Status copyFolder(int fromFolder, const std::string& from, int toFolder,
                        const std::string& to, int depth) {
    if (depth > kDeepest)
        return posixFailure(ELOOP);
    const FileDescriptor source(
        ::openat(fromFolder, from.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!source.isOpen() || ::mkdirat(toFolder, to.c_str(), 0755) != 0)
        return lastPosixFailure();
    const FileDescriptor copy(
        ::openat(toFolder, to.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!copy.isOpen())
        return lastPosixFailure();
    const auto names = namesInDirectory(source.number());
    if (!names)
        return names.failure();
    for (const std::string& name : names.value())
        if (auto copied = copyTree(source.number(), name, copy.number(), name, depth + 1); !copied)
            return copied;
    return host::Done{};
}

host::Status copyTree(int fromFolder, const std::string& from, int toFolder, const std::string& to,
                      int depth) {
    struct stat attributes {};
    if (::fstatat(fromFolder, from.c_str(), &attributes, AT_SYMLINK_NOFOLLOW) != 0)
        return lastPosixFailure();
    if (S_ISREG(attributes.st_mode))
        return copyFile(fromFolder, from, toFolder, to, attributes);
    if (S_ISLNK(attributes.st_mode))
        return copyLink(fromFolder, from, toFolder, to);
    if (S_ISDIR(attributes.st_mode))
        return copyFolder(fromFolder, from, toFolder, to, depth);
    return posixFailure(EOPNOTSUPP);
}

bool exists(int folder, const std::string& name) {
    struct stat attributes {};
    return ::fstatat(folder, name.c_str(), &attributes, AT_SYMLINK_NOFOLLOW) == 0;
}

bool isFolder(int folder, const std::string& name) {
    struct stat attributes {};
    return ::fstatat(folder, name.c_str(), &attributes, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISDIR(attributes.st_mode);
}

/// The copy's name must be on the disk before the original goes.
void syncFolder(int folder) {
    const FileDescriptor open(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (open.isOpen())
        ::fsync(open.number());
}

host::Status moveAcrossFileSystems(int fromFolder, const std::string& from, int toFolder,
                                   const std::string& to) {
    if (exists(toFolder, to))
        return posixFailure(EEXIST);
    const bool folder = isFolder(fromFolder, from);
    const std::string hidden = newHiddenName();
    auto moved = copyTree(fromFolder, from, toFolder, hidden, 0);
    if (moved)
        moved = renameWithoutReplacing(toFolder, hidden, toFolder, to);
    if (!moved) {
        (void)removeTree(toFolder, hidden);
        return moved;
    }
    syncFolder(toFolder);
    auto removed = removeTree(fromFolder, from);
    // A folder may be gone in part by now: then the copy is all there is.
    if (!removed && !folder)
        (void)removeTree(toFolder, to);
    return removed;
}

}

host::Status moveTree(int fromFolder, const std::string& from, int toFolder,
                      const std::string& to) {
    auto moved = renameWithoutReplacing(fromFolder, from, toFolder, to);
    if (moved || moved.failure().code != EXDEV)
        return moved;
    return moveAcrossFileSystems(fromFolder, from, toFolder, to);
}

}
