#include "audio/OvoAudioPlayerRemote.h"

#include "audio/OvoAudioPlayerController.h"
#include "platform/foundation/NSBundle.h"
#include "platform/media/AVAudioPlayer.h"
#include "platform/uikit/UISlider.h"

namespace vistrel {

namespace {

using Loop = MPNowPlayingInfo::Loop;

Loop loopOf(const OvoAudioPlayerController& screen) {
    if (screen.repeatOne())
        return Loop::Track;
    return screen.repeatAll() ? Loop::Queue : Loop::None;
}

/// A player that is not playing counts as stopped at the start of the track.
MPNowPlayingInfo::State stateOf(const AVAudioPlayer& player) {
    if (player.isPlaying())
        return MPNowPlayingInfo::State::Playing;
    return player.currentTime() > 0 ? MPNowPlayingInfo::State::Paused
                                    : MPNowPlayingInfo::State::Stopped;
}

}

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
    info.artUrl = NSURL::fileURLWithPath(
                      NSBundle::mainBundle().pathForResourceOfType("AudioPlayerNoArtwork", "png"))
                      .absoluteString();
    info.loop = loopOf(screen_);
    info.shuffle = screen_.shuffle();
    info.canGoNext = screen_.canGoOnToNext();
    info.canGoPrevious = screen_.canGoToPreviousTrack();
    if (player) {
        info.duration = player->duration();
        info.volume = player->volume();
        info.canPlay = true;
        info.state = stateOf(*player);
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
    else if (screen_.interrupted())
        screen_.player()->pause();
}

/// As at the end of the queue: the screen stays, at the start of the track.
void OvoAudioPlayerRemote::mediaStop() {
    mediaPause();
    mediaSeek(0);
    update();
}

void OvoAudioPlayerRemote::mediaSetLoop(Loop loop) {
    while (loopOf(screen_) != loop)
        screen_.toggleRepeat();
}

void OvoAudioPlayerRemote::mediaSetShuffle(bool shuffle) {
    if (screen_.shuffle() != shuffle)
        screen_.toggleShuffle();
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
