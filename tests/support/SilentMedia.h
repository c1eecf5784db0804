#pragma once
#include "platform/host/Media.h"

#include "platform/host/EventLoop.h"

#include <map>

namespace vistrel::support {

class SilentMedia;

/// What the silent players find at an address.
struct SilentItem {
    double duration = 60;
    int pictureWidth = 640;
    int pictureHeight = 360;
    std::string failure;       ///< not empty: preparing fails with it
    bool readyByItself = true; ///< at the next turn after prepare
};

/// A player without sound or picture whose position moves with the loop's clock.
class SilentPlayback : public host::MoviePlayback {
public:
    SilentPlayback(SilentMedia& media, std::string url);
    ~SilentPlayback() override;
    SilentPlayback(const SilentPlayback&) = delete;
    SilentPlayback& operator=(const SilentPlayback&) = delete;

    void setClient(host::PlaybackClient* client) override { client_ = client; }
    void prepare() override;
    bool play() override;
    void pause() override;
    void stop() override;
    bool isPlaying() const override { return playing_; }
    double currentTime() const override;
    void setCurrentTime(double seconds) override;
    double duration() const override;
    float volume() const override { return volume_; }
    void setVolume(float volume) override { volume_ = volume; }
    int pictureWidth() const override { return item_.pictureWidth; }
    int pictureHeight() const override { return item_.pictureHeight; }
    unsigned framesShown() const override { return 0; }
    host::ForeignContent& picture() override { return picture_; }

    const std::string& url() const { return url_; }
    /// What was asked of it, in order: "prepare", "play", "pause", "stop", "seek".
    const std::vector<std::string>& calls() const { return calls_; }

    void becomeReady();
    void end();
    void fail(const std::string& message);
    void stall(bool stalled);
    void interrupt(bool begins);

private:
    void scheduleEnd();
    void halt();

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

class SilentMedia : public host::Media {
public:
    explicit SilentMedia(host::EventLoop& loop)
        : loop_(loop) {}

    std::shared_ptr<host::MoviePlayback> createMoviePlayback(const std::string& url) override;
    host::Result<std::shared_ptr<host::Playback>>
    createAudioPlayback(const std::string& url) override;
    host::Result<std::unique_ptr<host::AudioFileReader>>
    openAudioFile(const std::string& path) override;
    host::Result<std::string> audioRoute() override { return audioRoute_; }

    /// What is at the address; by default an item of 60 seconds.
    SilentItem& at(const std::string& url) { return items_[url]; }
    /// Tags of a file by device path; a file without tags cannot be opened.
    void setTags(const std::string& path, host::AudioFileReader::Info info,
                 std::vector<std::byte> id3Tag = {});
    void setAudioRoute(host::Result<std::string> route) { audioRoute_ = std::move(route); }

    /// The players that are alive, oldest first.
    const std::vector<SilentPlayback*>& players() const { return players_; }
    /// The newest one; null when there is none.
    SilentPlayback* player() const { return players_.empty() ? nullptr : players_.back(); }

private:
    friend class SilentPlayback;
    struct Tags {
        host::AudioFileReader::Info info;
        std::vector<std::byte> id3Tag;
    };

    host::EventLoop& loop_;
    std::map<std::string, SilentItem> items_;
    std::map<std::string, Tags> tags_;
    host::Result<std::string> audioRoute_ = std::string("Speaker");
    std::vector<SilentPlayback*> players_;
};

}
