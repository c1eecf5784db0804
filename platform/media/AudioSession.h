#pragma once
#include "platform/media/OSStatus.h"

#include <string>

namespace vistrel {

/// The application's part in the machine's sound. One session; main thread only.

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

/// A listener of null asks for no interruptions. When the session is initialised already the status
/// says so; a listener given then takes the place of the earlier one, so that each screen that
/// plays hears of interruptions.
OSStatus AudioSessionInitialize(AudioSessionInterruptionListener listener, void* clientData);
/// Whoever was client data says so before it goes.
void AudioSessionRemoveInterruptionListener(const void* clientData);
OSStatus AudioSessionSetActive(bool active);
OSStatus AudioSessionSetProperty(AudioSessionPropertyID property, std::uint32_t value);
/// The route's name: "Speaker", "Headphone", ...; empty when sound goes nowhere.
OSStatus AudioSessionGetProperty(AudioSessionPropertyID property, std::string& value);

/// The players' way in: tells the listener.
void AudioSessionInterrupt(std::uint32_t state);
/// Forgets everything (between tests).
void AudioSessionReset();

}
