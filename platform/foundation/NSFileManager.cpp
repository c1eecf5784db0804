#include "platform/foundation/NSFileManager.h"

#include "platform/host/Host.h"

#include <utility>

namespace vistrel {

namespace {
host::Files& files() {
    return *host::current().files;
}

NSError errorOf(const host::Failure& failure) {
    return {NSPOSIXErrorDomain, failure.code, failure.message};
}

std::optional<NSError> errorOf(const host::Status& status) {
    if (status)
        return std::nullopt;
    return errorOf(status.failure());
}
}

NSFileManager& NSFileManager::defaultManager() {
    static NSFileManager manager;
    return manager;
}

NSFileManager::Listing NSFileManager::contentsOfDirectoryAtPath(const std::string& path) {
    auto names = files().list(path);
    if (!names)
        return {{}, errorOf(names.failure())};
    return {std::move(names.value()), std::nullopt};
}

bool NSFileManager::fileExistsAtPath(const std::string& path) {
    return files().info(path).ok();
}

std::optional<host::FileInfo> NSFileManager::attributesOfItemAtPath(const std::string& path) {
    auto info = files().info(path);
    if (!info)
        return std::nullopt;
    return info.value();
}

std::optional<NSError> NSFileManager::createDirectoryAtPath(const std::string& path,
                                                            bool withIntermediateDirectories) {
    return errorOf(files().createDirectory(path, withIntermediateDirectories));
}

std::optional<NSError> NSFileManager::moveItemAtPathToPath(const std::string& from,
                                                           const std::string& to) {
    return errorOf(files().move(from, to));
}

std::optional<NSError> NSFileManager::removeItemAtPath(const std::string& path) {
    return errorOf(files().remove(path));
}

bool NSFileManager::createFileAtPath(const std::string& path, std::span<const std::byte> contents) {
    if (!files().createFile(path))
        return false;
    if (contents.empty())
        return true;
    auto stream = files().openForUpdating(path);
    if (!stream || !stream.value()->write(contents))
        return false;
    return stream.value()->close().ok();
}

std::optional<std::vector<std::byte>> NSFileManager::contentsAtPath(const std::string& path) {
    auto bytes = files().read(path);
    if (!bytes)
        return std::nullopt;
    return std::move(bytes.value());
}

std::optional<NSError> NSFileManager::writeAtomicallyToPath(const std::string& path,
                                                            std::span<const std::byte> bytes) {
    return errorOf(files().writeAtomically(path, bytes));
}

std::optional<NSError> NSFileManager::setModificationTimeOfItemAtPath(const std::string& path,
                                                                      double seconds) {
    return errorOf(files().setTimes(path, seconds));
}

}
