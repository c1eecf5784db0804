#pragma once
#include "platform/host/Media.h"
#include "platform/linux/NativeCallback.h"
#include "platform/linux/NativeReference.h"
#include "platform/linux/media/MediaSetup.h"
#include "platform/linux/media/PictureScrubber.h"
#include "platform/linux/media/SoundOutput.h"
#include "platform/linux/media/VideoPicture.h"

#include <gst/play/play.h>

#include <array>
#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vistrel {

/// What to play.
struct PlaybackSource {
    std::string url;                  ///< machine address
    std::vector<std::string> cookies; ///< "name=value", for http sources
    std::optional<StreamCredential> credential;
    std::string userAgent;
    double duration = 0; ///< seconds if known beforehand; overrides the pipeline's guess
    /// Finds the final address of a redirect. The streaming library would send cookies and
    /// credentials to any server, so a source that has any stops at a redirect.
    using Found = std::function<void(std::optional<PlaybackSource>)>;
    std::function<void(Found found)> followRedirect;
};

/// One player over GstPlay. Its pipeline runs on its own threads and reports through a message bus
/// that is watched on the main loop. The pipeline exists from prepare or play to stop. Owned by a
/// std::shared_ptr.
class GstPlayback : public host::MoviePlayback, public std::enable_shared_from_this<GstPlayback> {
public:
    enum class Picture { None, Shown };

    /// `sound` must outlive the player.
    GstPlayback(PlaybackSource source, Picture picture, SoundOutput& sound);
    ~GstPlayback() override;
    GstPlayback(const GstPlayback&) = delete;
    GstPlayback& operator=(const GstPlayback&) = delete;

    void setClient(host::PlaybackClient* client) override { client_ = client; }
    void prepare() override;
    bool play() override;
    void pause() override;
    void stop() override;
    bool isPlaying() const override { return playing_ && !interrupted_; }
    double currentTime() const override;
    void setCurrentTime(double seconds) override;
    void scrubTo(double seconds) override;
    double duration() const override;
    float volume() const override { return volume_; }
    void setVolume(float volume) override;
    int pictureWidth() const override { return picture_ ? picture_->width() : 0; }
    int pictureHeight() const override { return picture_ ? picture_->height() : 0; }
    unsigned framesShown() const override { return picture_ ? picture_->framesShown() : 0; }
    host::ForeignContent& picture() override { return *picture_; }

    /// The pipeline, for tests; null while there is none.
    GstPlay* native() const { return play_; }

private:
    void open();
    void close();
    double bounded(double seconds) const;
    void endScrubbing();
    void received(GstMessage* message);
    void stateChanged(GstPlayState state);
    void tellWhenReady();
    void fail(const std::string& message);
    /// Follows a redirect; returns whether its target is being looked up.
    bool followRedirect(const std::string& message);
    void redirected(std::optional<PlaybackSource> source, const std::string& message);
    /// Seeking fails on a server without range requests and would end the playback.
    bool isSeekable() const;
    bool hasStreams() const;
    /// The pipeline's position, queried from time to time and extrapolated by the clock in between,
    /// because a screen that shows it asks a hundred times a second.
    double runningTime() const;
    void forgetRunningTime() { askedAt_ = 0; }
    /// Handles the sound server's request to pause or to resume.
    void stateRequested(GstState state);

    PlaybackSource source_;
    SoundOutput& sound_;
    std::unique_ptr<VideoPicture> picture_;
    host::PlaybackClient* client_ = nullptr;
    GstPlay* play_ = nullptr;
    NativeReference<GstBus> bus_; ///< carries GstPlay's reports
    std::array<SignalConnection, 6> connections_;
    bool playing_ = false; ///< wanted
    bool opened_ = false;  ///< paused or playing
    bool ready_ = false;
    bool stalled_ = false;
    bool failed_ = false;
    /// Set on the pipeline's threads.
    std::shared_ptr<std::atomic<bool>> stoppedAtRedirect_ =
        std::make_shared<std::atomic<bool>>(false);
    std::shared_ptr<std::atomic<bool>> refusesRanges_ = std::make_shared<std::atomic<bool>>(false);
    bool redirecting_ = false; ///< no pipeline until the new address is known
    int redirects_ = 0;
    bool interrupted_ = false;
    float volume_ = 1;
    NativeReference<GstElement> loudness_; ///< the pipeline's element for the volume
    double position_ = 0;                  ///< while there is no pipeline, or a seek is under way
    bool seeking_ = false;
    std::shared_ptr<PictureScrubber> scrubber_; ///< while the position is being dragged
    mutable double askedPosition_ = 0;
    mutable gint64 askedAt_ = 0; ///< monotonic microseconds; 0: not since something changed
};

}
