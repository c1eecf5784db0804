#pragma once
#include "platform/media/OSStatus.h"

#include <string>

namespace vistrel {

/// The application's use of the machine's sound. There is one session; main thread only.

inline constexpr OSStatus kAudioSessionNotInitialized = fourCharCode("!ini");
inline constexpr OSStatus kAudioSessionAlreadyInitialized = fourCharCode("init");
inline constexpr OSStatus kAudioSessionUnsupportedPropertyError = fourCharCode("pty?");
inline constexpr OSStatus kAudioSessionUnspecifiedError = fourCharCode("what");

inline constexpr std::uint32_t kAudioSessionEndInterruption = 0;
inline constexpr std::uint32_t kAudioSessionBeginInterruption = 1;

using AudioSessionPropertyID = std::uint32_t;
inline constexpr AudioSessionPropertyID kAudioSessionProperty_AudioCategory = fourCharCode("acat");
inline constexpr AudioSessionPropertyID kAudioSessionProperty_AudioRoute = fourCharCode("rout");
inline constexpr std::uint32_t kAudioSessionCategory_MediaPlayback = fourCharCode("medi");

using AudioSessionInterruptionListener = void (*)(void* clientData, std::uint32_t state);

/// A null listener receives no interruptions. When the session is already initialised, the status
/// says so; a listener given then replaces the previous one, so that each screen that plays is told
/// about interruptions.
OSStatus AudioSessionInitialize(AudioSessionInterruptionListener listener, void* clientData);
/// Client data must be removed with this before it is destroyed.
void AudioSessionRemoveInterruptionListener(const void* clientData);
OSStatus AudioSessionSetActive(bool active);
OSStatus AudioSessionSetProperty(AudioSessionPropertyID property, std::uint32_t value);
/// The route's name: "Speaker", "Headphone", ...; empty when there is no output.
OSStatus AudioSessionGetProperty(AudioSessionPropertyID property, std::string& value);

/// For players: notifies the listener.
void AudioSessionInterrupt(std::uint32_t state);
/// Resets the session between tests.
void AudioSessionReset();

}
