#include "platform/linux/media/GstPlayback.h"

#include "platform/foundation/Weakly.h"
#include "platform/linux/media/GstPlaybackWiring.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vistrel {

namespace {

double secondsOf(GstClockTime time) {
    return GST_CLOCK_TIME_IS_VALID(time) ? static_cast<double>(time) / GST_SECOND : 0;
}

constexpr double kSecondsBetweenQuestions = 0.1;
constexpr int kMostRedirects = 5; ///< each may be a whole chain

GstClockTime clockTimeOf(double seconds) {
    return static_cast<GstClockTime>(std::max(0.0, seconds) * GST_SECOND);
}

}

GstPlayback::GstPlayback(PlaybackSource source, Picture picture, SoundOutput& sound)
    : source_(std::move(source))
    , sound_(sound)
    , picture_(picture == Picture::Shown ? std::make_unique<VideoPicture>() : nullptr) {}

GstPlayback::~GstPlayback() {
    close();
}

void GstPlayback::open() {
    if (play_ || redirecting_)
        return;
    *refusesRanges_ = false;
    play_ = gst_play_new(nullptr);
    GstStructure* config = gst_play_get_config(play_);
    gst_play_config_set_seek_accurate(config, TRUE);
    gst_play_config_set_position_update_interval(config, 0);
    gst_play_set_config(play_, config);
    GstElement* pipeline = gst_play_get_pipeline(play_);
    g_object_set(
        pipeline, "audio-sink", sound_.makeSink(picture_ ? "video" : "music"), "video-sink",
        picture_ ? picture_->makeSink() : gst_element_factory_make("fakesink", nullptr), nullptr);
    loudness_ = insertVolume(pipeline);
    gst_play_set_video_track_enabled(play_, picture_ != nullptr);
    gst_play_set_subtitle_track_enabled(play_, FALSE);
    bus_ = NativeReference<GstBus>::adopt(gst_play_get_message_bus(play_));
    gst_bus_add_signal_watch(bus_.get());
    connections_ = {dressSource(pipeline, source_),
                    limitDecoders(pipeline),
                    watchRequests(pipeline, weakly(this, &GstPlayback::stateRequested)),
                    watchRedirects(pipeline, stoppedAtRedirect_),
                    watchRanges(pipeline, refusesRanges_),
                    connectSignal<void(GstMessage*)>(bus_.get(), "message",
                                                     weakly(this, &GstPlayback::received))};
    gst_object_unref(pipeline);
    gst_play_set_uri(play_, source_.url.c_str());
    setVolume(volume_);
    if (position_ > 0)
        setCurrentTime(position_);
}

void GstPlayback::close() {
    if (!play_)
        return;
    connections_ = {};
    gst_bus_remove_signal_watch(bus_.get());
    bus_ = {};
    loudness_ = {};
    scrubber_.reset();
    retire(std::exchange(play_, nullptr));
    opened_ = ready_ = seeking_ = stalled_ = interrupted_ = false;
}

void GstPlayback::prepare() {
    if (failed_ || playing_)
        return;
    open();
    if (play_)
        gst_play_pause(play_);
}

bool GstPlayback::play() {
    if (failed_)
        return false;
    forgetRunningTime();
    open();
    playing_ = true;
    interrupted_ = false;
    if (play_ && !scrubber_)
        gst_play_play(play_);
    return true;
}

void GstPlayback::pause() {
    playing_ = interrupted_ = false;
    forgetRunningTime();
    if (play_)
        gst_play_pause(play_);
}

void GstPlayback::stop() {
    position_ = currentTime();
    playing_ = redirecting_ = false;
    close();
}

double GstPlayback::currentTime() const {
    if (!play_ || seeking_ || scrubber_ || !ready_)
        return position_;
    return runningTime();
}

double GstPlayback::runningTime() const {
    const gint64 now = g_get_monotonic_time();
    const double since = static_cast<double>(now - askedAt_) / G_USEC_PER_SEC;
    const bool runs = isPlaying() && !stalled_;
    if (!runs || askedAt_ == 0 || since > kSecondsBetweenQuestions) {
        askedPosition_ = secondsOf(gst_play_get_position(play_));
        askedAt_ = now;
        return askedPosition_;
    }
    const double counted = askedPosition_ + since;
    return duration() > 0 ? std::min(counted, duration()) : counted;
}

bool GstPlayback::hasStreams() const {
    GstPlayMediaInfo* info = gst_play_get_media_info(play_);
    const bool has = info && gst_play_media_info_get_number_of_video_streams(info) +
                                     gst_play_media_info_get_number_of_audio_streams(info) >
                                 0;
    g_clear_object(&info);
    return has;
}

bool GstPlayback::isSeekable() const {
    if (*refusesRanges_)
        return false;
    if (!ready_)
        return true; // not known yet
    GstPlayMediaInfo* info = gst_play_get_media_info(play_);
    const bool seekable = !info || gst_play_media_info_is_seekable(info);
    g_clear_object(&info);
    return seekable;
}

double GstPlayback::bounded(double seconds) const {
    return std::clamp(seconds, 0.0, duration() > 0 ? duration() : HUGE_VAL);
}

void GstPlayback::setCurrentTime(double seconds) {
    if (play_ && !isSeekable())
        return;
    position_ = bounded(seconds);
    if (!play_)
        return;
    seeking_ = true;
    if (const auto scrubber = std::exchange(scrubber_, nullptr))
        scrubber->finish(weakly(this, &GstPlayback::endScrubbing));
    else
        gst_play_seek(play_, clockTimeOf(position_));
}

void GstPlayback::endScrubbing() {
    if (!play_)
        return;
    gst_play_seek(play_, clockTimeOf(position_));
    if (isPlaying())
        gst_play_play(play_);
}

void GstPlayback::scrubTo(double seconds) {
    if (!play_ || !ready_ || !isSeekable())
        return;
    position_ = bounded(seconds);
    if (!scrubber_) {
        // Playing on, the film could end below the finger.
        gst_play_pause(play_);
        scrubber_ = PictureScrubber::withPipeline(
            NativeReference<GstElement>::adopt(gst_play_get_pipeline(play_)));
    }
    scrubber_->show(position_);
}

double GstPlayback::duration() const {
    if (source_.duration > 0)
        return source_.duration;
    return play_ ? secondsOf(gst_play_get_duration(play_)) : 0;
}

void GstPlayback::setVolume(float volume) {
    volume_ = std::clamp(volume, 0.0F, 1.0F);
    if (loudness_)
        g_object_set(loudness_.get(), "volume", static_cast<double>(volume_), nullptr);
}

void GstPlayback::received(GstMessage* message) {
    forgetRunningTime();
    GstPlayMessage type{};
    gst_play_message_parse_type(message, &type);
    switch (type) {
    case GST_PLAY_MESSAGE_STATE_CHANGED: {
        GstPlayState state{};
        gst_play_message_parse_state_changed(message, &state);
        stateChanged(state);
        tellWhenReady();
        break;
    }
    case GST_PLAY_MESSAGE_SEEK_DONE:
        seeking_ = false;
        break;
    case GST_PLAY_MESSAGE_MEDIA_INFO_UPDATED:
        tellWhenReady();
        break;
    case GST_PLAY_MESSAGE_END_OF_STREAM:
        position_ = duration();
        playing_ = opened_ = ready_ = seeking_ = false;
        if (client_)
            client_->playbackDidEnd();
        break;
    case GST_PLAY_MESSAGE_ERROR: {
        GError* error = nullptr;
        gst_play_message_parse_error(message, &error, nullptr);
        const std::string text = error ? error->message : "unknown";
        g_clear_error(&error);
        if (!*stoppedAtRedirect_ || !followRedirect(text))
            fail(text);
        break;
    }
    default:
        break;
    }
}

void GstPlayback::stateChanged(GstPlayState state) {
    if (state == GST_PLAY_STATE_BUFFERING && ready_ && !stalled_) {
        stalled_ = true;
        if (client_)
            client_->playbackStalled(true);
        return;
    }
    if (state != GST_PLAY_STATE_PAUSED && state != GST_PLAY_STATE_PLAYING)
        return;
    opened_ = true;
    if (std::exchange(stalled_, false) && client_)
        client_->playbackStalled(false);
}

void GstPlayback::tellWhenReady() {
    // A remote source is "paused" before its first byte has arrived: only its streams show that it
    // plays.
    if (ready_ || failed_ || !play_ || !opened_ || !hasStreams())
        return;
    ready_ = true;
    if (client_)
        client_->playbackDidBecomeReady();
}

void GstPlayback::fail(const std::string& message) {
    if (std::exchange(failed_, true))
        return;
    position_ = currentTime();
    playing_ = false;
    if (client_)
        client_->playbackDidFail(message);
}

bool GstPlayback::followRedirect(const std::string& message) {
    if (!source_.followRedirect || failed_ || redirects_ == kMostRedirects)
        return false;
    ++redirects_;
    *stoppedAtRedirect_ = false;
    position_ = currentTime();
    close();
    redirecting_ = true;
    source_.followRedirect(
        weakly(this, [message](GstPlayback& self, std::optional<PlaybackSource> source) {
            self.redirected(std::move(source), message);
        }));
    return true;
}

void GstPlayback::redirected(std::optional<PlaybackSource> source, const std::string& message) {
    if (!std::exchange(redirecting_, false))
        return; // stopped
    if (!source) {
        fail(message);
        return;
    }
    source_ = std::move(*source);
    if (playing_)
        play();
    else
        prepare();
}

void GstPlayback::stateRequested(GstState state) {
    forgetRunningTime();
    if (state == GST_STATE_PAUSED && playing_ && !interrupted_) {
        interrupted_ = true;
        if (client_)
            client_->playbackInterrupted(true);
    } else if (state == GST_STATE_PLAYING && interrupted_) {
        // The pipeline has already resumed, but that is the application's choice.
        interrupted_ = playing_ = false;
        gst_play_pause(play_);
        if (client_)
            client_->playbackInterrupted(false);
    } else if (state == GST_STATE_PLAYING && !playing_ && play_) {
        gst_play_pause(play_);
    }
}

}
