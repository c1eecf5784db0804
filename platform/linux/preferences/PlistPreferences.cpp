#include "platform/linux/preferences/PlistPreferences.h"

#include "platform/linux/files/FileDescriptor.h"
#include "platform/linux/files/NewFile.h"
#include "platform/linux/files/PosixFailure.h"
#include "platform/linux/files/PosixFileStream.h"
#include "platform/linux/preferences/PropertyList.h"

#include <fcntl.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

namespace vistrel {

PlistPreferences::PlistPreferences(std::string path)
    : path_(std::move(path)) {}

host::Result<Value> PlistPreferences::readPropertyList(const std::string& machinePath) {
    const FileDescriptor file(::open(machinePath.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.isOpen())
        return lastPosixFailure();
    const auto bytes = readAll(file.number());
    if (!bytes)
        return bytes.failure();
    auto value = valueFromPropertyList(bytes.value());
    if (!value)
        return host::Failure{EBADMSG, machinePath + " is not a property list"};
    return std::move(*value);
}

host::Result<Value> PlistPreferences::load() {
    auto stored = readPropertyList(path_);
    if (!stored && stored.failure().code == ENOENT)
        return Value(Value::Dictionary());
    if (stored && !stored.value().isDictionary())
        stored = host::Failure{EBADMSG, path_ + " does not hold a dictionary"};
    if (!stored && stored.failure().code == EBADMSG)
        std::rename(path_.c_str(), (path_ + ".damaged").c_str());
    return stored;
}

host::Status PlistPreferences::save(const Value& dictionary) {
    const std::filesystem::path path(path_);
    std::error_code ignored;
    std::filesystem::create_directories(path.parent_path(), ignored);
    const FileDescriptor folder(
        ::open(path.parent_path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!folder.isOpen())
        return lastPosixFailure();
    return writeFileAtomically(folder.number(), path.filename().string(),
                               propertyListFromValue(dictionary));
}

}
