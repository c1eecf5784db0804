#include "platform/media/AVAudioPlayer.h"

#include "platform/host/Host.h"
#include "platform/media/AudioSession.h"

#include <utility>

namespace vistrel {

namespace {
constexpr const char* kErrorDomain = "AVAudioPlayerErrorDomain";
constexpr int kDecodeError = -1;
}

std::shared_ptr<AVAudioPlayer> AVAudioPlayer::withContentsOfURL(const NSURL& url,
                                                                std::optional<NSError>* error) {
    if (error)
        error->reset();
    auto opened = host::current().media->createAudioPlayback(url.absoluteString());
    if (!opened) {
        if (error)
            error->emplace(NSPOSIXErrorDomain, opened.failure().code, opened.failure().message);
        return nullptr;
    }
    std::shared_ptr<AVAudioPlayer> player(new AVAudioPlayer(url, std::move(opened.value())));
    player->playback_->setClient(player.get());
    return player;
}

AVAudioPlayer::AVAudioPlayer(NSURL url, std::shared_ptr<host::Playback> playback)
    : url_(std::move(url))
    , playback_(std::move(playback)) {}

AVAudioPlayer::~AVAudioPlayer() {
    playback_->setClient(nullptr);
    endInterruption();
}

void AVAudioPlayer::setDelegate(std::weak_ptr<AVAudioPlayerDelegate> delegate) {
    delegate_ = std::move(delegate);
}

float AVAudioPlayer::volume() const {
    return playback_->volume();
}

void AVAudioPlayer::setVolume(float volume) {
    playback_->setVolume(volume);
}

void AVAudioPlayer::prepareToPlay() {
    playback_->prepare();
}

bool AVAudioPlayer::play() {
    // Without waiting for the end of an interruption, which then is not reported.
    if (isInterrupted_)
        playbackInterrupted(false);
    if (std::exchange(ended_, false))
        playback_->setCurrentTime(0);
    return playback_->play();
}

void AVAudioPlayer::pause() {
    playback_->pause();
    endInterruption();
}

void AVAudioPlayer::stop() {
    playback_->stop();
    endInterruption();
    loopsPlayed_ = 0;
}

bool AVAudioPlayer::isPlaying() const {
    return playback_->isPlaying();
}

double AVAudioPlayer::currentTime() const {
    return ended_ ? 0 : playback_->currentTime();
}

void AVAudioPlayer::setCurrentTime(double seconds) {
    ended_ = false;
    playback_->setCurrentTime(seconds);
}

double AVAudioPlayer::duration() const {
    return playback_->duration();
}

void AVAudioPlayer::playbackDidEnd() {
    const auto self = shared_from_this();
    if (numberOfLoops_ < 0 || loopsPlayed_ < numberOfLoops_) {
        ++loopsPlayed_;
        playback_->setCurrentTime(0);
        playback_->play();
        return;
    }
    loopsPlayed_ = 0;
    ended_ = true;
    if (const auto delegate = delegate_.lock())
        delegate->audioPlayerDidFinishPlayingSuccessfully(*this, true);
}

void AVAudioPlayer::playbackDidFail(const std::string& message) {
    const auto self = shared_from_this();
    endInterruption();
    const auto delegate = delegate_.lock();
    if (!delegate)
        return;
    delegate->audioPlayerDecodeErrorDidOccurError(*this,
                                                  NSError(kErrorDomain, kDecodeError, message));
    delegate->audioPlayerDidFinishPlayingSuccessfully(*this, false);
}

void AVAudioPlayer::endInterruption() {
    if (std::exchange(isInterrupted_, false))
        AudioSessionInterrupt(kAudioSessionEndInterruption);
}

void AVAudioPlayer::playbackInterrupted(bool begins) {
    const auto self = shared_from_this();
    if (begins && !std::exchange(isInterrupted_, true))
        AudioSessionInterrupt(kAudioSessionBeginInterruption);
    else if (!begins)
        endInterruption();
    const auto delegate = delegate_.lock();
    if (!delegate)
        return;
    if (begins)
        delegate->audioPlayerBeginInterruption(*this);
    else
        delegate->audioPlayerEndInterruption(*this);
}

}
