#include "platform/media/AudioFormat.h"

#include <cstring>

namespace vistrel {

namespace {

constexpr std::size_t kHeaderSize = 10;
constexpr unsigned kHasFooter = 0x10;

unsigned at(std::span<const std::byte> bytes, std::size_t index) {
    return std::to_integer<unsigned>(bytes[index]);
}

}

OSStatus AudioFormatGetProperty(AudioFormatPropertyID property,
                                std::span<const std::byte> specifier, std::uint32_t& resultSize,
                                std::uint32_t& result) {
    if (property != kAudioFormatProperty_ID3TagSize)
        return kAudioFormatUnsupportedPropertyError;
    if (resultSize != sizeof result)
        return kAudioFormatBadPropertySizeError;
    if (specifier.size() < kHeaderSize)
        return kAudioFormatBadSpecifierSizeError;
    if (std::memcmp(specifier.data(), "ID3", 3) != 0)
        return kAudioFormatUnknownFormatError;
    // ID3v2.4, 3.1: major version, then the size without the header in four bytes of seven bits.
    const unsigned version = at(specifier, 3);
    if (version < 2 || version > 4)
        return kAudioFormatUnsupportedDataFormatError;
    std::uint32_t size = 0;
    for (std::size_t i = 6; i < kHeaderSize; ++i) {
        if (at(specifier, i) & 0x80)
            return kAudioFormatUnspecifiedError;
        size = size << 7 | at(specifier, i);
    }
    const bool hasFooter = version == 4 && (at(specifier, 5) & kHasFooter);
    result = size + static_cast<std::uint32_t>(kHeaderSize * (hasFooter ? 2 : 1));
    return noErr;
}

}
