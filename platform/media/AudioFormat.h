#pragma once
#include "platform/media/OSStatus.h"

#include <cstddef>
#include <span>

namespace vistrel {

inline constexpr OSStatus kAudioFormatUnspecifiedError = fourCharCode("what");
inline constexpr OSStatus kAudioFormatUnsupportedPropertyError = fourCharCode("prop");
inline constexpr OSStatus kAudioFormatBadPropertySizeError = fourCharCode("!siz");
inline constexpr OSStatus kAudioFormatBadSpecifierSizeError = fourCharCode("!spc");
inline constexpr OSStatus kAudioFormatUnsupportedDataFormatError = fourCharCode("fmt?");
inline constexpr OSStatus kAudioFormatUnknownFormatError = fourCharCode("!fmt");

using AudioFormatPropertyID = std::uint32_t;
inline constexpr AudioFormatPropertyID kAudioFormatProperty_ID3TagSize = fourCharCode("id3s");

/// 'id3s': the size in bytes of the ID3 tag at the start of `specifier`, which needs only its
/// ten-byte header. `resultSize` must be 4. A specifier that is too short for a header, one without
/// a tag, and a tag of an unknown version each have their own status.
OSStatus AudioFormatGetProperty(AudioFormatPropertyID property,
                                std::span<const std::byte> specifier, std::uint32_t& resultSize,
                                std::uint32_t& result);

}
