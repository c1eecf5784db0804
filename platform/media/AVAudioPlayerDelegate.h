#pragma once

namespace vistrel {
class AVAudioPlayer;
class NSError;

/// Hears an audio player, on the main thread.
class AVAudioPlayerDelegate {
public:
    virtual ~AVAudioPlayerDelegate() = default;
    /// Played to its end, repeats included, or could not go on. Not called after pause or stop.
    virtual void audioPlayerDidFinishPlayingSuccessfully(AVAudioPlayer&, bool /*successfully*/) {}
    /// Followed by an unsuccessful finish.
    virtual void audioPlayerDecodeErrorDidOccurError(AVAudioPlayer&, const NSError&) {}
    /// Something more important took the sound; the player has paused.
    virtual void audioPlayerBeginInterruption(AVAudioPlayer&) {}
    /// The sound is free again; the player does not go on by itself.
    virtual void audioPlayerEndInterruption(AVAudioPlayer&) {}
};

}
