#include "audio/OvoAudioPlayerRemote.h"

#include "audio/OvoAudioPlayerController.h"
#include "platform/media/AVAudioPlayer.h"
#include "platform/uikit/UISlider.h"

namespace vistrel {

OvoAudioPlayerRemote::OvoAudioPlayerRemote(OvoAudioPlayerController& screen)
    : screen_(screen) {
    MPRemoteControls::setDelegate(this);
}

OvoAudioPlayerRemote::~OvoAudioPlayerRemote() {
    MPRemoteControls::resignDelegate(*this);
}

void OvoAudioPlayerRemote::update() const {
    const OvoAudioFile& file = *screen_.soundFiles()[screen_.selectedIndex()];
    const AVAudioPlayer* player = screen_.player().get();
    MPNowPlayingInfo info;
    info.track = screen_.selectedIndex();
    info.title = file.title();
    info.artist = file.artist();
    info.album = file.album();
    info.url = file.filePath().absoluteString();
    info.canGoNext = screen_.canGoOnToNext();
    info.canGoPrevious = screen_.canGoToPreviousTrack();
    if (player) {
        info.duration = player->duration();
        info.volume = player->volume();
        info.canPlay = true;
        info.state = player->isPlaying() ? MPNowPlayingInfo::State::Playing
                                         : MPNowPlayingInfo::State::Paused;
    }
    MPRemoteControls::setNowPlayingInfo(info);
}

void OvoAudioPlayerRemote::mediaPlay() {
    if (screen_.player() && !screen_.player()->isPlaying())
        screen_.play();
}

void OvoAudioPlayerRemote::mediaPause() {
    if (screen_.player() && screen_.player()->isPlaying())
        screen_.play();
}

/// As at the end of the queue: still on the screen, at the track's beginning.
void OvoAudioPlayerRemote::mediaStop() {
    mediaPause();
    mediaSeek(0);
}

void OvoAudioPlayerRemote::mediaNext() {
    screen_.next();
}

void OvoAudioPlayerRemote::mediaPrevious() {
    screen_.previous();
}

void OvoAudioPlayerRemote::mediaSeek(double seconds) {
    if (!screen_.player())
        return;
    screen_.player()->setCurrentTime(seconds);
    screen_.updateCurrentTime();
    MPRemoteControls::positionJumped(screen_.player()->currentTime());
}

void OvoAudioPlayerRemote::mediaSetVolume(float volume) {
    UISlider& slider = *screen_.views().volumeSlider;
    slider.setValue(volume);
    screen_.volumeSliderMoved(slider);
}

double OvoAudioPlayerRemote::mediaPosition() const {
    return screen_.player() ? screen_.player()->currentTime() : 0;
}

}
