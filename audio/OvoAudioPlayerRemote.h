#pragma once
#include "platform/media/MPRemoteControls.h"

namespace vistrel {
class OvoAudioPlayerController;

/// Lets media keys and lock screens control the music player, within the limits of its buttons.
class OvoAudioPlayerRemote : public MPRemoteControlsDelegate {
public:
    /// Owned by the screen. Holds the media controls until it is destroyed.
    explicit OvoAudioPlayerRemote(OvoAudioPlayerController& screen);
    ~OvoAudioPlayerRemote() override;

    /// Reports what the screen shows.
    void update() const;

    void mediaPlay() override;
    void mediaPause() override;
    void mediaStop() override;
    void mediaNext() override;
    void mediaPrevious() override;
    void mediaSeek(double seconds) override;
    void mediaSetVolume(float volume) override;
    void mediaSetLoop(MPNowPlayingInfo::Loop loop) override;
    void mediaSetShuffle(bool shuffle) override;
    double mediaPosition() const override;

private:
    OvoAudioPlayerController& screen_;
};

}
