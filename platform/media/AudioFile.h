#pragma once
#include "platform/foundation/NSURL.h"
#include "platform/foundation/Value.h"
#include "platform/media/OSStatus.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <span>

namespace vistrel {
namespace host {
class AudioFileReader;
}

/// An open audio file; may be empty.
using AudioFileID = std::shared_ptr<host::AudioFileReader>;

inline constexpr OSStatus kAudioFileUnspecifiedError = fourCharCode("wht?");
inline constexpr OSStatus kAudioFileUnsupportedFileTypeError = fourCharCode("typ?");
inline constexpr OSStatus kAudioFileUnsupportedPropertyError = fourCharCode("pty?");
inline constexpr OSStatus kAudioFileBadPropertySizeError = fourCharCode("!siz");
inline constexpr OSStatus kAudioFilePermissionsError = fourCharCode("prm?");
inline constexpr OSStatus kAudioFileNotOpenError = -38;
inline constexpr OSStatus kAudioFileFileNotFoundError = -43;

using AudioFilePropertyID = std::uint32_t;
inline constexpr AudioFilePropertyID kAudioFilePropertyID3Tag = fourCharCode("id3t");
inline constexpr AudioFilePropertyID kAudioFilePropertyInfoDictionary = fourCharCode("info");

/// Keys of the info dictionary. Only values that the file contains are present; all are strings.
inline constexpr const char* kAFInfoDictionary_Title = "title";
inline constexpr const char* kAFInfoDictionary_Artist = "artist";
inline constexpr const char* kAFInfoDictionary_Album = "album";
inline constexpr const char* kAFInfoDictionary_ApproximateDurationInSeconds =
    "approximate duration in seconds";

/// Opens for reading; `file` is empty after a failure. Releasing `file` closes it.
OSStatus AudioFileOpenURL(const NSURL& url, AudioFileID& file);
/// The property's size in bytes; 'id3t' of a file without a tag is an unsupported property.
OSStatus AudioFileGetPropertyInfo(const AudioFileID& file, AudioFilePropertyID property,
                                  std::uint32_t& size);
/// Raw bytes, 'id3t': `buffer` must hold the whole property; `size` is set to what was read.
OSStatus AudioFileGetProperty(const AudioFileID& file, AudioFilePropertyID property,
                              std::span<std::byte> buffer, std::uint32_t& size);
/// The dictionary, 'info'.
OSStatus AudioFileGetProperty(const AudioFileID& file, AudioFilePropertyID property,
                              std::optional<Value>& dictionary);

}
