#include "platform/media/AudioFile.h"

#include "platform/host/Host.h"
#include "platform/host/Media.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string>
#include <utility>

namespace vistrel {

namespace {

OSStatus statusOf(const host::Failure& failure) {
    switch (failure.code) {
    case ENOENT:
    case ENOTDIR:
        return kAudioFileFileNotFoundError;
    case EACCES:
    case EPERM:
        return kAudioFilePermissionsError;
    case EINVAL:
    case EISDIR:
        return kAudioFileUnsupportedFileTypeError;
    default:
        return kAudioFileUnspecifiedError;
    }
}

/// The tag, or the status for its absence.
OSStatus readTag(const AudioFileID& file, AudioFilePropertyID property,
                 std::vector<std::byte>& tag) {
    if (!file)
        return kAudioFileNotOpenError;
    if (property != kAudioFilePropertyID3Tag)
        return kAudioFileUnsupportedPropertyError;
    auto read = file->id3Tag();
    if (!read)
        return statusOf(read.failure());
    tag = std::move(read.value());
    return tag.empty() ? kAudioFileUnsupportedPropertyError : noErr;
}

}

OSStatus AudioFileOpenURL(const NSURL& url, AudioFileID& file) {
    file.reset();
    if (!url.isFileURL())
        return kAudioFileFileNotFoundError;
    auto opened = host::current().media->openAudioFile(url.path());
    if (!opened)
        return statusOf(opened.failure());
    file = std::move(opened.value());
    return noErr;
}

OSStatus AudioFileGetPropertyInfo(const AudioFileID& file, AudioFilePropertyID property,
                                  std::uint32_t& size) {
    if (file && property == kAudioFilePropertyInfoDictionary) {
        size = sizeof(void*);
        return noErr;
    }
    std::vector<std::byte> tag;
    const OSStatus status = readTag(file, property, tag);
    size = static_cast<std::uint32_t>(tag.size());
    return status;
}

OSStatus AudioFileGetProperty(const AudioFileID& file, AudioFilePropertyID property,
                              std::span<std::byte> buffer, std::uint32_t& size) {
    std::vector<std::byte> tag;
    size = 0;
    if (const OSStatus status = readTag(file, property, tag))
        return status;
    if (buffer.size() < tag.size())
        return kAudioFileBadPropertySizeError;
    std::copy(tag.begin(), tag.end(), buffer.begin());
    size = static_cast<std::uint32_t>(tag.size());
    return noErr;
}

OSStatus AudioFileGetProperty(const AudioFileID& file, AudioFilePropertyID property,
                              std::optional<Value>& dictionary) {
    dictionary.reset();
    if (!file)
        return kAudioFileNotOpenError;
    if (property != kAudioFilePropertyInfoDictionary)
        return kAudioFileUnsupportedPropertyError;
    const auto read = file->info();
    if (!read)
        return statusOf(read.failure());
    const auto& info = read.value();
    Value::Dictionary entries;
    if (!info.title.empty())
        entries.set(kAFInfoDictionary_Title, info.title);
    if (!info.artist.empty())
        entries.set(kAFInfoDictionary_Artist, info.artist);
    if (!info.album.empty())
        entries.set(kAFInfoDictionary_Album, info.album);
    if (info.duration > 0) {
        char seconds[32];
        std::snprintf(seconds, sizeof seconds, "%.3f", info.duration);
        entries.set(kAFInfoDictionary_ApproximateDurationInSeconds, seconds);
    }
    dictionary = Value(std::move(entries));
    return noErr;
}

}
