#include "web/DownloadFile.h"

#include "platform/foundation/NSArrayPathUtilities.h"
#include "platform/foundation/NSFileHandle.h"
#include "platform/foundation/NSFileManager.h"

#include <set>
#include <utility>

namespace vistrel {

namespace {

std::set<std::string>& namesInUse() {
    static std::set<std::string> names;
    return names;
}

std::string numbered(const std::string& name, int number) {
    const std::string_view stem = stringByDeletingPathExtension(name);
    return std::string(stem) + " " + std::to_string(number) + name.substr(stem.size());
}

bool isFree(const std::string& name, DownloadFile::Existing existing) {
    return !namesInUse().contains(name) &&
           (existing == DownloadFile::Existing::Replace ||
            !NSFileManager::defaultManager().fileExistsAtPath(kDownloadsFolder + name));
}

}

DownloadFile::DownloadFile(const std::string& suggestedName, Existing existing)
    : name_(suggestedName) {
    for (int number = 2; !isFree(name_, existing); ++number)
        name_ = numbered(suggestedName, number);
    namesInUse().insert(name_);
}

DownloadFile::~DownloadFile() {
    namesInUse().erase(name_);
}

std::optional<std::int64_t> DownloadFile::size() const {
    const auto info = NSFileManager::defaultManager().attributesOfItemAtPath(path());
    return info ? std::optional(info->size) : std::nullopt;
}

bool DownloadFile::create() {
    return NSFileManager::defaultManager().createFileAtPath(path());
}

bool DownloadFile::open() {
    handle_ = NSFileHandle::fileHandleForUpdatingAtPath(path());
    return isOpen();
}

std::optional<NSError> DownloadFile::write(std::span<const std::byte> data) {
    if (!handle_)
        return std::nullopt;
    handle_->seekToEndOfFile();
    return handle_->writeData(data);
}

std::optional<NSError> DownloadFile::close() {
    const auto handle = std::exchange(handle_, nullptr);
    return handle ? handle->closeFile() : std::nullopt;
}

}
