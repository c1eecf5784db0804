#pragma once
#include "platform/media/MPRemoteControls.h"

#include <string>

namespace vistrel {
class MPMoviePlayerController;
class NSURL;

/// Shows a film in the desktop's media controls while this object exists.
class MPMovieRemote : public MPRemoteControlsDelegate {
public:
    /// Owned by the player.
    MPMovieRemote(MPMoviePlayerController& player, const NSURL& url);
    ~MPMovieRemote() override;
    MPMovieRemote(const MPMovieRemote&) = delete;
    MPMovieRemote& operator=(const MPMovieRemote&) = delete;

    /// Reports the player's state.
    void update();

    void mediaPlay() override;
    void mediaPause() override;
    /// Pauses at the start; leaving the film's screen is up to the user.
    void mediaStop() override;
    void mediaNext() override {}
    void mediaPrevious() override {}
    void mediaSeek(double seconds) override;
    void mediaSetVolume(float volume) override;
    void mediaSetLoop(MPNowPlayingInfo::Loop) override {}
    void mediaSetShuffle(bool) override {}
    double mediaPosition() const override;

private:
    MPMoviePlayerController& player_;
    MPNowPlayingInfo info_;
};

}
