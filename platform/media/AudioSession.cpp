#include "platform/media/AudioSession.h"

#include "platform/host/Host.h"
#include "platform/host/Media.h"

namespace vistrel {

namespace {

struct Session {
    bool initialized = false;
    AudioSessionInterruptionListener listener = nullptr;
    void* clientData = nullptr;
};

Session session;

}

OSStatus AudioSessionInitialize(AudioSessionInterruptionListener listener, void* clientData) {
    const bool again = session.initialized;
    session.initialized = true;
    if (listener) {
        session.listener = listener;
        session.clientData = clientData;
    }
    return again ? kAudioSessionAlreadyInitialized : noErr;
}

void AudioSessionRemoveInterruptionListener(const void* clientData) {
    if (session.clientData != clientData)
        return;
    session.listener = nullptr;
    session.clientData = nullptr;
}

OSStatus AudioSessionSetActive(bool) {
    return session.initialized ? noErr : kAudioSessionNotInitialized;
}

OSStatus AudioSessionSetProperty(AudioSessionPropertyID property, std::uint32_t value) {
    if (!session.initialized)
        return kAudioSessionNotInitialized;
    const bool known = property == kAudioSessionProperty_AudioCategory &&
                       value == kAudioSessionCategory_MediaPlayback;
    return known ? noErr : kAudioSessionUnsupportedPropertyError;
}

OSStatus AudioSessionGetProperty(AudioSessionPropertyID property, std::string& value) {
    if (!session.initialized)
        return kAudioSessionNotInitialized;
    if (property != kAudioSessionProperty_AudioRoute)
        return kAudioSessionUnsupportedPropertyError;
    const auto route = host::current().media->audioRoute();
    if (!route)
        return kAudioSessionUnspecifiedError;
    value = route.value();
    return noErr;
}

void AudioSessionInterrupt(std::uint32_t state) {
    if (session.listener)
        session.listener(session.clientData, state);
}

void AudioSessionReset() {
    session = {};
}

}
