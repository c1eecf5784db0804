#pragma once

namespace vistrel {
class AVAudioPlayer;
class NSError;

/// Receives an audio player's events on the main thread.
class AVAudioPlayerDelegate {
public:
    virtual ~AVAudioPlayerDelegate() = default;
    /// The player has reached its end, including repetitions, or could not go on. Not called after
    /// pause or stop.
    virtual void audioPlayerDidFinishPlayingSuccessfully(AVAudioPlayer&, bool /*successfully*/) {}
    /// Followed by an unsuccessful finish.
    virtual void audioPlayerDecodeErrorDidOccurError(AVAudioPlayer&, const NSError&) {}
    /// Something more important took the sound, so the player has paused.
    virtual void audioPlayerBeginInterruption(AVAudioPlayer&) {}
    /// The sound is available again; the player does not resume by itself.
    virtual void audioPlayerEndInterruption(AVAudioPlayer&) {}
};

}
