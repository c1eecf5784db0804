#pragma once
#include "platform/host/ForeignContent.h"
#include "platform/host/Result.h"

#include <memory>
#include <string>
#include <vector>

namespace vistrel::host {

/// Receives one player's events, on the loop.
class PlaybackClient {
public:
    virtual ~PlaybackClient() = default;
    /// Enough is known to play.
    virtual void playbackDidBecomeReady() = 0;
    virtual void playbackStalled(bool stalled) = 0;
    virtual void playbackDidEnd() = 0;
    virtual void playbackDidFail(const std::string& message) = 0;
    /// The sound server interrupts playing (for a call), or ends the interruption.
    virtual void playbackInterrupted(bool begins) = 0;
};

/// Plays one file or address. Times in seconds.
class Playback {
public:
    virtual ~Playback() = default;
    virtual void setClient(PlaybackClient* client) = 0;
    /// Opens and pauses; playbackDidBecomeReady or playbackDidFail follows.
    virtual void prepare() = 0;
    virtual bool play() = 0;
    virtual void pause() = 0;
    virtual void stop() = 0;
    virtual bool isPlaying() const = 0;
    virtual double currentTime() const = 0;
    virtual void setCurrentTime(double seconds) = 0;
    virtual double duration() const = 0; ///< 0 while unknown
    virtual float volume() const = 0;    ///< 0 to 1
    virtual void setVolume(float volume) = 0;
    virtual int pictureWidth() const = 0; ///< pixels; 0 without a picture
    virtual int pictureHeight() const = 0;
    virtual unsigned framesShown() const = 0;
};

/// A playback with its moving picture as content of the view tree.
class MoviePlayback : public Playback {
public:
    virtual ForeignContent& picture() = 0;
    /// While a position is being dragged: holds the film and shows a picture near `seconds`.
    /// setCurrentTime ends it.
    virtual void scrubTo(double seconds) = 0;
};

/// Tags and properties of one audio file.
class AudioFileReader {
public:
    virtual ~AudioFileReader() = default;
    /// The raw ID3v2 tag with its header, empty when there is none.
    virtual Result<std::vector<std::byte>> id3Tag() = 0;
    struct Info {
        std::string title;
        std::string artist;
        std::string album;
        double duration = 0; ///< seconds; 0 when unknown
    };
    virtual Result<Info> info() = 0;
};

class Media {
public:
    virtual ~Media() = default;
    /// Prepares for the first film, on another thread.
    virtual void warmUp() = 0;
    /// `url` is http, https, or file with a device path.
    virtual std::shared_ptr<MoviePlayback> createMoviePlayback(const std::string& url) = 0;
    /// Opens a local file for sound; fails when it cannot be opened or has no sound.
    virtual Result<std::shared_ptr<Playback>> createAudioPlayback(const std::string& url) = 0;
    /// `path` is a device path.
    virtual Result<std::unique_ptr<AudioFileReader>> openAudioFile(const std::string& path) = 0;
    /// "Speaker", "Headphone", ...; empty without a route; a failure without a sound system. Cheap:
    /// it starts nothing, and may fail until the first player has been created.
    virtual Result<std::string> audioRoute() = 0;
};

}
