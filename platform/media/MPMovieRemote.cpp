#include "platform/media/MPMovieRemote.h"

#include "platform/foundation/NSURL.h"
#include "platform/media/MPMoviePlayerController.h"

namespace vistrel {

MPMovieRemote::MPMovieRemote(MPMoviePlayerController& player, const NSURL& url)
    : player_(player) {
    info_.title = url.lastPathComponent();
    info_.url = url.absoluteString();
    info_.canPlay = true;
    MPRemoteControls::setDelegate(this);
}

MPMovieRemote::~MPMovieRemote() {
    MPRemoteControls::resignDelegate(*this);
}

void MPMovieRemote::update() {
    using State = MPNowPlayingInfo::State;
    info_.duration = player_.duration();
    info_.volume = player_.volume();
    info_.state = player_.isPlaying() ? State::Playing : State::Paused;
    MPRemoteControls::setNowPlayingInfo(info_);
}

void MPMovieRemote::mediaPlay() {
    if (!player_.isPlaying())
        player_.play();
}

void MPMovieRemote::mediaPause() {
    player_.pause();
}

void MPMovieRemote::mediaStop() {
    player_.pause();
    player_.setCurrentPlaybackTime(0);
}

void MPMovieRemote::mediaSeek(double seconds) {
    player_.setCurrentPlaybackTime(seconds);
}

void MPMovieRemote::mediaSetVolume(float volume) {
    player_.setVolume(volume);
}

double MPMovieRemote::mediaPosition() const {
    return player_.currentPlaybackTime();
}

}
