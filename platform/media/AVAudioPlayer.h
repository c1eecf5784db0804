#pragma once
#include "platform/foundation/NSError.h"
#include "platform/foundation/NSURL.h"
#include "platform/host/Media.h"
#include "platform/media/AVAudioPlayerDelegate.h"

#include <memory>
#include <optional>

namespace vistrel {

/// Plays one sound file. Times in seconds. Main thread only.
class AVAudioPlayer : public std::enable_shared_from_this<AVAudioPlayer>,
                      private host::PlaybackClient {
public:
    /// Null, with the reason in `error`, when the file cannot be opened or contains no sound.
    static std::shared_ptr<AVAudioPlayer> withContentsOfURL(const NSURL& url,
                                                            std::optional<NSError>* error);
    ~AVAudioPlayer() override;

    void setDelegate(std::weak_ptr<AVAudioPlayerDelegate> delegate);
    /// Repetitions after the first time; negative: until stopped.
    void setNumberOfLoops(int loops) { numberOfLoops_ = loops; }
    int numberOfLoops() const { return numberOfLoops_; }
    float volume() const;
    void setVolume(float volume); ///< 0 to 1

    void prepareToPlay();
    /// False when it cannot be played. After the end, plays from the start.
    bool play();
    /// During an interruption: does not resume after it.
    void pause();
    /// Keeps the position; releases what playing needs.
    void stop();
    bool isPlaying() const;
    /// 0 after the end.
    double currentTime() const;
    void setCurrentTime(double seconds);
    double duration() const;
    const NSURL& url() const { return url_; }

private:
    AVAudioPlayer(NSURL url, std::shared_ptr<host::Playback> playback);
    void playbackDidBecomeReady() override {}
    void playbackStalled(bool /*stalled*/) override {}
    void playbackDidEnd() override;
    void playbackDidFail(const std::string& message) override;
    void playbackInterrupted(bool begins) override;
    /// A player that is stopped or paused is not told about the end of its interruption, but the
    /// session must be.
    void endInterruption();

    NSURL url_;
    std::shared_ptr<host::Playback> playback_;
    std::weak_ptr<AVAudioPlayerDelegate> delegate_;
    int numberOfLoops_ = 0;
    int loopsPlayed_ = 0;
    bool ended_ = false;
    bool isInterrupted_ = false;
};

}
