#pragma once
#include "platform/media/MPRemoteControls.h"

namespace vistrel {
class OvoAudioPlayerController;

/// The music player in the hands of media keys and lock screens. What the buttons do not offer is
/// not done here either.
class OvoAudioPlayerRemote : public MPRemoteControlsDelegate {
public:
    /// Owned by the screen. Takes the controls until it is destroyed.
    explicit OvoAudioPlayerRemote(OvoAudioPlayerController& screen);
    ~OvoAudioPlayerRemote() override;

    /// Tells what the screen shows now.
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
