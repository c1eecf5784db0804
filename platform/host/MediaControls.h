#pragma once
#include <cstdint>
#include <string>

namespace vistrel::host {

/// What the desktop shows of the music that plays, and what it offers. Times in seconds.
struct NowPlaying {
    std::uint32_t track = 0; ///< place in the queue, from 0
    std::string title;
    std::string artist;
    std::string album;
    std::string url;
    std::string artUrl; ///< the cover's address; empty without one
    double duration = 0;
    enum class State { Stopped, Paused, Playing };
    State state = State::Stopped;
    enum class Loop { None, Track, Queue };
    Loop loop = Loop::None;
    bool shuffle = false;
    bool canGoNext = false;
    bool canGoPrevious = false;
    bool canPlay = false; ///< there is a track to play, pause and seek in
    float volume = 0;     ///< 0 to 1
    friend bool operator==(const NowPlaying&, const NowPlaying&) = default;
};

/// Handles media keys, lock screens and remote controls, on the loop.
class MediaControlsClient {
public:
    virtual ~MediaControlsClient() = default;
    virtual void mediaPlay() = 0;
    virtual void mediaPause() = 0;
    virtual void mediaStop() = 0;
    virtual void mediaNext() = 0;
    virtual void mediaPrevious() = 0;
    virtual void mediaSeek(double seconds) = 0;
    virtual void mediaSetVolume(float volume) = 0;
    virtual void mediaSetLoop(NowPlaying::Loop loop) = 0;
    virtual void mediaSetShuffle(bool shuffle) = 0;
    virtual double mediaPosition() const = 0;
};

/// The desktop's media controls.
class MediaControls {
public:
    virtual ~MediaControls() = default;
    /// Who is controlled from now on; null: nobody, and the desktop shows no player.
    virtual void setClient(MediaControlsClient* client) = 0;
    /// Kept by the implementation until the next call; repeating the same costs nothing.
    virtual void setNowPlaying(const NowPlaying& nowPlaying) = 0;
    /// The position has changed other than by playing.
    virtual void positionJumped(double seconds) = 0;
};

}
