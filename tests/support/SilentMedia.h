#pragma once
#include "platform/host/Media.h"

#include "platform/host/EventLoop.h"
#include "tests/support/Testing.h"

#include <cerrno>

namespace vistrel::support {

class SilentPlayback;

/// What the silent players find at an address.
struct SilentItem {
    double duration = 60;
    int pictureWidth = 640;
    int pictureHeight = 360;
    std::string failure;       ///< not empty: preparing fails with it
    bool readyByItself = true; ///< at the next turn after prepare
};

/// An audio file that has only its tags.
struct SilentFile : host::AudioFileReader {
    host::Result<std::vector<std::byte>> id3Tag() override { return tag; }
    host::Result<Info> info() override { return fields; }
    Info fields;
    std::vector<std::byte> tag;
};

/// Finds an item at every address.
class SilentMedia : public host::Media {
public:
    explicit SilentMedia(host::EventLoop& loop)
        : loop_(loop) {}

    void warmUp() override { isWarm = true; }
    bool isWarm = false;
    std::shared_ptr<host::MoviePlayback> createMoviePlayback(const std::string& url) override;
    host::Result<std::shared_ptr<host::Playback>>
    createAudioPlayback(const std::string& url) override;
    host::Result<std::unique_ptr<host::AudioFileReader>>
    openAudioFile(const std::string& path) override {
        const auto found = files_.find(path);
        if (found == files_.end())
            return host::Failure{ENOENT, "No such file or directory"};
        return std::unique_ptr<host::AudioFileReader>(std::make_unique<SilentFile>(found->second));
    }
    host::Result<std::string> audioRoute() override { return audioRoute_; }

    /// What is at the address; by default an item of 60 seconds.
    SilentItem& at(const std::string& url) { return items_[url]; }
    /// Tags of a file by device path; a file without tags cannot be opened.
    void setTags(const std::string& path, host::AudioFileReader::Info info,
                 std::vector<std::byte> id3Tag = {}) {
        files_[path].fields = std::move(info);
        files_[path].tag = std::move(id3Tag);
    }
    void setAudioRoute(host::Result<std::string> route) { audioRoute_ = std::move(route); }

    /// The players that are alive, oldest first.
    const std::vector<SilentPlayback*>& players() const { return players_; }
    /// The newest one; null when there is none.
    SilentPlayback* player() const { return players_.empty() ? nullptr : players_.back(); }

private:
    friend class SilentPlayback;
    host::EventLoop& loop_;
    std::map<std::string, SilentItem> items_;
    std::map<std::string, SilentFile> files_;
    host::Result<std::string> audioRoute_ = std::string("Speaker");
    std::vector<SilentPlayback*> players_;
};

/// A player without sound or picture whose position moves with the loop's clock.
class SilentPlayback : public host::MoviePlayback {
public:
    SilentPlayback(SilentMedia& media, std::string url)
        : media_(media)
        , url_(std::move(url))
        , item_(media.items_[url_]) {
        media_.players_.push_back(this);
    }
    ~SilentPlayback() override {
        media_.loop_.cancel(pending_);
        std::erase(media_.players_, this);
    }
    SilentPlayback(const SilentPlayback&) = delete;
    SilentPlayback& operator=(const SilentPlayback&) = delete;

    void setClient(host::PlaybackClient* client) override { client_ = client; }
    void prepare() override {
        calls_.emplace_back("prepare");
        if (!item_.failure.empty()) {
            pending_ = media_.loop_.schedule(0, [this] { fail(item_.failure); });
        } else if (item_.readyByItself && !ready_) {
            pending_ = media_.loop_.schedule(0, [this] { becomeReady(); });
        }
    }
    bool play() override {
        calls_.emplace_back("play");
        if (!item_.failure.empty())
            return false;
        playing_ = true;
        playingSince_ = media_.loop_.now();
        if (ready_) {
            media_.loop_.cancel(pending_);
            scheduleEnd();
        }
        return true;
    }
    void pause() override {
        calls_.emplace_back("pause");
        halt();
    }
    void stop() override {
        calls_.emplace_back("stop");
        halt();
    }
    bool isPlaying() const override { return playing_; }
    double currentTime() const override {
        if (!playing_ || !ready_)
            return position_;
        return std::min(position_ + media_.loop_.now() - playingSince_, item_.duration);
    }
    void setCurrentTime(double seconds) override {
        calls_.emplace_back("seek");
        moveTo(seconds);
    }
    void scrubTo(double seconds) override {
        calls_.emplace_back("scrub");
        moveTo(seconds);
    }
    double duration() const override { return ready_ ? item_.duration : 0; }
    float volume() const override { return volume_; }
    void setVolume(float volume) override { volume_ = volume; }
    int pictureWidth() const override { return item_.pictureWidth; }
    int pictureHeight() const override { return item_.pictureHeight; }
    unsigned framesShown() const override { return 0; }
    host::ForeignContent& picture() override { return picture_; }

    const std::string& url() const { return url_; }
    /// What was asked of it, in order: "prepare", "play", "pause", "stop", "seek", "scrub".
    const std::vector<std::string>& calls() const { return calls_; }

    void becomeReady() {
        ready_ = true;
        pending_ = 0;
        playingSince_ = media_.loop_.now();
        if (playing_)
            scheduleEnd();
        if (client_)
            client_->playbackDidBecomeReady();
    }
    void end() {
        halt();
        position_ = item_.duration;
        if (client_)
            client_->playbackDidEnd();
    }
    void fail(const std::string& message) {
        halt();
        if (client_)
            client_->playbackDidFail(message);
    }
    void stall(bool stalled) {
        if (client_)
            client_->playbackStalled(stalled);
    }
    void interrupt(bool begins) {
        if (begins)
            halt();
        if (client_)
            client_->playbackInterrupted(begins);
    }

private:
    void moveTo(double seconds) {
        const bool playing = playing_;
        halt();
        position_ = std::clamp(seconds, 0.0, item_.duration);
        playing_ = playing;
        playingSince_ = media_.loop_.now();
        if (playing_ && ready_)
            scheduleEnd();
    }
    void scheduleEnd() {
        pending_ = media_.loop_.schedule(item_.duration - position_, [this] { end(); });
    }
    void halt() {
        position_ = currentTime();
        playing_ = false;
        media_.loop_.cancel(std::exchange(pending_, 0));
    }

    SilentMedia& media_;
    std::string url_;
    SilentItem item_;
    host::ForeignContent picture_;
    host::PlaybackClient* client_ = nullptr;
    std::vector<std::string> calls_;
    bool ready_ = false;
    bool playing_ = false;
    double position_ = 0;
    double playingSince_ = 0;
    float volume_ = 1;
    host::EventLoop::Token pending_ = 0;
};

inline std::shared_ptr<host::MoviePlayback>
SilentMedia::createMoviePlayback(const std::string& url) {
    return std::make_shared<SilentPlayback>(*this, url);
}

inline host::Result<std::shared_ptr<host::Playback>>
SilentMedia::createAudioPlayback(const std::string& url) {
    if (const std::string& failure = items_[url].failure; !failure.empty())
        return host::Failure{EINVAL, failure};
    auto playback = std::make_shared<SilentPlayback>(*this, url);
    playback->becomeReady();
    return std::shared_ptr<host::Playback>(std::move(playback));
}

}
