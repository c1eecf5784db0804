#include "web/DownloadFile.h"

#include "platform/foundation/NSArrayPathUtilities.h"
#include "platform/foundation/NSFileHandle.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/PlainFilename.h"
#include "platform/foundation/UTF8Text.h"

#include <algorithm>
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
    const std::string end = " " + std::to_string(number) + name.substr(stem.size());
    const std::size_t room = kLongestFilename - std::min(end.size(), kLongestFilename);
    return std::string(shortenedUTF8(stem, room)) + end;
}

}

bool DownloadFile::isReserved(const std::string& name) {
    return namesInUse().contains(name);
}

bool DownloadFile::isFree(const std::string& name) {
    return !isReserved(name) &&
           !NSFileManager::defaultManager().fileExistsAtPath(kDownloadsFolder + name);
}

DownloadFile::DownloadFile(const std::string& suggestedName, Existing existing)
    : name_(suggestedName) {
    const auto isTaken = [existing](const std::string& name) {
        return existing == Existing::Replace ? isReserved(name) : !isFree(name);
    };
    for (int number = 2; isTaken(name_); ++number)
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
