#include "audio/OvoAudioFile.h"

#include "audio/OvoAudioPlayerLabels.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSLog.h"
#include "platform/graphics/UIImage.h"
#include "platform/media/AudioFile.h"
#include "platform/media/AudioFormat.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>

namespace vistrel {

namespace {

const char* formatErrorText(OSStatus status) {
    switch (status) {
    case kAudioFormatUnspecifiedError:
        return "Error: audio format unspecified error";
    case kAudioFormatUnsupportedPropertyError:
        return "Error: audio format unsupported property error";
    case kAudioFormatBadPropertySizeError:
        return "Error: audio format bad property size error";
    case kAudioFormatBadSpecifierSizeError:
        return "Error: audio format bad specifier size error";
    case kAudioFormatUnsupportedDataFormatError:
        return "Error: audio format unsupported data format error";
    case kAudioFormatUnknownFormatError:
        return "Error: audio format unknown format error";
    default:
        return "Error: unknown audio format error";
    }
}

/// Reads the raw tag and its size, only to log errors in it.
void checkRawTag(const AudioFileID& file, std::uint32_t byteCount) {
    const std::unique_ptr<std::byte[]> tag(new (std::nothrow) std::byte[byteCount]);
    if (!tag) {
        NSLog("could not allocate " + std::to_string(byteCount) + " bytes of memory for ID3 tag");
        return;
    }
    const std::span<std::byte> buffer(tag.get(), byteCount);
    if (AudioFileGetProperty(file, kAudioFilePropertyID3Tag, buffer, byteCount) != noErr)
        NSLog("AudioFileGetPropertyID3Tag failed");
    std::uint32_t tagSize = 0;
    std::uint32_t resultSize = sizeof tagSize;
    const OSStatus status =
        AudioFormatGetProperty(kAudioFormatProperty_ID3TagSize, buffer, resultSize, tagSize);
    if (status != noErr) {
        NSLog("AudioFormatGetProperty_ID3TagSize failed");
        NSLog(formatErrorText(status));
    }
}

/// The number at the start of the text, after blanks; 0 when there is none.
float leadingNumber(std::string_view text) {
    const auto start = text.find_first_not_of(" \t\n\r");
    if (start == std::string_view::npos)
        return 0;
    text.remove_prefix(start);
    if (text.front() == '+')
        text.remove_prefix(1);
    float number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return std::isfinite(number) ? number : 0;
}

}

OvoAudioFile::OvoAudioFile(NSURL filePath, Reading reading)
    : filePath_(std::move(filePath)) {
    if (reading == Reading::AtOnce)
        readIfNeeded();
}

void OvoAudioFile::readIfNeeded() const {
    if (std::exchange(read_, true))
        return;
    fileInfoDict_ = songID3Tags();
}

std::optional<Value> OvoAudioFile::songID3Tags() const {
    AudioFileID file;
    if (AudioFileOpenURL(filePath_, file) != noErr)
        NSLog("AudioFileOpenURL failed");
    std::uint32_t byteCount = 0;
    if (AudioFileGetPropertyInfo(file, kAudioFilePropertyID3Tag, byteCount) != noErr)
        NSLog("AudioFileGetPropertyInfo failed for ID3 tag");
    checkRawTag(file, byteCount);
    std::optional<Value> dictionary;
    if (AudioFileGetProperty(file, kAudioFilePropertyInfoDictionary, dictionary) != noErr)
        NSLog("AudioFileGetProperty failed for property info dictionary");
    return dictionary;
}

const std::optional<Value>& OvoAudioFile::fileInfoDict() const {
    readIfNeeded();
    return fileInfoDict_;
}

void OvoAudioFile::setFileInfoDict(std::optional<Value> fileInfoDict) {
    read_ = true;
    fileInfoDict_ = std::move(fileInfoDict);
}

std::optional<std::string> OvoAudioFile::text(const char* key) const {
    const auto& dictionary = fileInfoDict();
    const Value* value = dictionary ? dictionary->find(key) : nullptr;
    if (!value)
        return std::nullopt;
    return std::string(value->string());
}

std::string OvoAudioFile::title() const {
    if (auto title = text(kAFInfoDictionary_Title))
        return *std::move(title);
    const std::string& address = filePath_.absoluteString();
    return address.substr(address.rfind('/') + 1);
}

std::string OvoAudioFile::artist() const {
    return text(kAFInfoDictionary_Artist).value_or("");
}

std::string OvoAudioFile::album() const {
    return text(kAFInfoDictionary_Album).value_or("");
}

float OvoAudioFile::duration() const {
    const auto seconds = text(kAFInfoDictionary_ApproximateDurationInSeconds);
    return seconds ? leadingNumber(*seconds) : 0;
}

std::string OvoAudioFile::durationInMinutes() const {
    const float seconds = duration();
    return OvoAudioPlayerLabels::minutesAndSeconds(
        OvoAudioPlayerLabels::wholeSeconds(static_cast<double>(seconds)));
}

/// Decoded once and kept while it is in use.
std::shared_ptr<const UIImage> OvoAudioFile::coverImage() const {
    static std::weak_ptr<const UIImage> shared;
    static std::string sharedPath;
    static double sharedScale = 0;
    auto picture = shared.lock();
    std::string path = NSBundle::mainBundle().pathForResourceOfType("AudioPlayerNoArtwork", "png");
    if (picture && path == sharedPath && sharedScale == UIImage::screenScale())
        return picture;
    picture = UIImage::imageWithContentsOfFile(path);
    shared = picture;
    sharedPath = std::move(path);
    sharedScale = UIImage::screenScale();
    return picture;
}

}
