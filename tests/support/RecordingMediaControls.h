#pragma once
#include "platform/host/MediaControls.h"
#include "tests/support/Testing.h"

namespace vistrel::support {

/// Media controls that record what they are told; a test presses the keys.
class RecordingMediaControls : public host::MediaControls {
public:
    void setClient(host::MediaControlsClient* client) override { client_ = client; }
    void setNowPlaying(const host::NowPlaying& nowPlaying) override { nowPlaying_ = nowPlaying; }
    void positionJumped(double seconds) override { jumps_.push_back(seconds); }

    /// "play", "pause", "stop", "next" or "previous", of a keyboard or a lock screen.
    void press(const std::string& key) {
        using Client = host::MediaControlsClient;
        static const std::map<std::string, void (Client::*)()> kKeys{
            {"play", &Client::mediaPlay},
            {"pause", &Client::mediaPause},
            {"stop", &Client::mediaStop},
            {"next", &Client::mediaNext},
            {"previous", &Client::mediaPrevious}};
        (client_->*kKeys.at(key))();
    }
    /// Null when nobody is controlled.
    host::MediaControlsClient* client() const { return client_; }
    const host::NowPlaying& nowPlaying() const { return nowPlaying_; }
    const std::vector<double>& jumps() const { return jumps_; }

private:
    host::MediaControlsClient* client_ = nullptr;
    host::NowPlaying nowPlaying_;
    std::vector<double> jumps_;
};

}
