#include "platform/linux/files/DeviceFiles.h"

#include "platform/linux/files/DirectoryListing.h"
#include "platform/linux/files/NewFile.h"
#include "platform/linux/files/PosixFailure.h"
#include "platform/linux/files/PosixFileStream.h"
#include "platform/linux/files/TreeMove.h"
#include "platform/linux/files/TreeRemoval.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cmath>
#include <filesystem>
#include <system_error>
#include <utility>

namespace vistrel {

namespace {

constexpr mode_t kFolderMode = 0755;

double secondsOf(const timespec& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

std::string absolute(const std::string& path) {
    std::error_code error;
    std::string whole = std::filesystem::absolute(path, error).lexically_normal().string();
    while (whole.size() > 1 && whole.ends_with('/'))
        whole.pop_back();
    return error ? path : whole;
}

timespec timespecOf(double seconds) {
    const double whole = std::floor(seconds);
    return {static_cast<time_t>(whole), static_cast<long>((seconds - whole) * 1e9)};
}

}

DeviceFiles::DeviceFiles(const std::string& root, PathResolver::Walk walk)
    : root_(absolute(root))
    , resolver_(root_, walk) {}

host::Result<std::vector<std::string>> DeviceFiles::list(const std::string& path) {
    const auto folder = resolver_.open(path, O_RDONLY | O_DIRECTORY);
    if (!folder)
        return folder.failure();
    return namesInDirectory(folder.value().number());
}

host::Result<host::FileInfo> DeviceFiles::info(const std::string& path) {
    const auto file = resolver_.open(path, O_PATH);
    if (!file)
        return file.failure();
    struct stat attributes {};
    if (::fstat(file.value().number(), &attributes) != 0)
        return lastPosixFailure();
    return host::FileInfo{S_ISDIR(attributes.st_mode), attributes.st_size,
                          secondsOf(attributes.st_mtim)};
}

host::Status DeviceFiles::createDirectory(const std::string& path, bool withIntermediates) {
    if (withIntermediates) {
        if (const auto there = info(path); there && there.value().isDirectory)
            return host::Done{};
    }
    auto place = resolver_.placeOf(path);
    if (!place && place.failure().code == ENOENT && withIntermediates) {
        const std::string parent = std::filesystem::path(path).lexically_normal().parent_path();
        if (auto created = createDirectory(parent, true); !created)
            return created;
        place = resolver_.placeOf(path);
    }
    if (!place)
        return place.failure();
    const auto& [folder, name] = place.value();
    if (::mkdirat(folder.number(), name.c_str(), kFolderMode) != 0)
        return lastPosixFailure();
    return host::Done{};
}

host::Status DeviceFiles::createFile(const std::string& path) {
    const auto place = resolver_.placeOf(path);
    if (!place)
        return place.failure();
    auto file = NewFile::createIn(place.value().folder.number());
    if (!file)
        return file.failure();
    return file.value().replace(place.value().name);
}

host::Result<FileDescriptor> DeviceFiles::openRegularFile(const std::string& path,
                                                          int flags) const {
    // Opening a pipe that lies there must not wait for its other end.
    auto file = resolver_.open(path, flags | O_NONBLOCK | O_NOCTTY);
    if (!file)
        return file.failure();
    struct stat attributes {};
    if (::fstat(file.value().number(), &attributes) != 0)
        return lastPosixFailure();
    if (!S_ISREG(attributes.st_mode))
        return posixFailure(S_ISDIR(attributes.st_mode) ? EISDIR : EINVAL);
    return file;
}

host::Result<std::unique_ptr<host::FileStream>>
DeviceFiles::openForUpdating(const std::string& path) {
    auto file = openRegularFile(path, O_RDWR | O_NOFOLLOW);
    if (!file)
        return file.failure();
    return std::unique_ptr<host::FileStream>(
        std::make_unique<PosixFileStream>(std::move(file.value())));
}

host::Status DeviceFiles::move(const std::string& from, const std::string& to) {
    const auto source = resolver_.placeOf(from);
    if (!source)
        return source.failure();
    const auto target = resolver_.placeOf(to);
    if (!target)
        return target.failure();
    return moveTree(source.value().folder.number(), source.value().name,
                    target.value().folder.number(), target.value().name);
}

host::Status DeviceFiles::remove(const std::string& path) {
    const auto place = resolver_.placeOf(path);
    if (!place)
        return place.failure();
    return removeTree(place.value().folder.number(), place.value().name);
}

host::Result<std::vector<std::byte>> DeviceFiles::read(const std::string& path) {
    const auto file = openRegularFile(path, O_RDONLY);
    if (!file)
        return file.failure();
    return readAll(file.value().number());
}

host::Status DeviceFiles::writeAtomically(const std::string& path,
                                          std::span<const std::byte> bytes) {
    const auto place = resolver_.placeOf(path);
    if (!place)
        return place.failure();
    return writeFileAtomically(place.value().folder.number(), place.value().name, bytes);
}

host::Status DeviceFiles::setTimes(const std::string& path, double seconds) {
    const auto file = openRegularFile(path, O_RDONLY);
    if (!file)
        return file.failure();
    const std::array<timespec, 2> times{timespecOf(seconds), timespecOf(seconds)};
    if (::futimens(file.value().number(), times.data()) != 0)
        return lastPosixFailure();
    return host::Done{};
}

std::string DeviceFiles::machinePath(const std::string& path) const {
    return root_ + std::filesystem::path("/" + path).lexically_normal().string();
}

}
