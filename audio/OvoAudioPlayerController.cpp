#include "audio/OvoAudioPlayerController.h"

#include "audio/OvoAudioFileReading.h"
#include "audio/OvoAudioPlayerRemote.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSTimer.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/foundation/Weakly.h"
#include "platform/media/AVAudioPlayer.h"
#include "platform/media/AudioSession.h"
#include "platform/uikit/UIAccessibility.h"
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UISlider.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace vistrel {

namespace {

constexpr const char* kInterruptionKey = "Interruption";

}

std::shared_ptr<OvoAudioPlayerController>
OvoAudioPlayerController::withSoundFilesAtPathAndSelectedIndex(SoundFiles soundFiles,
                                                               std::string path,
                                                               std::uint32_t selectedIndex) {
    std::shared_ptr<OvoAudioPlayerController> controller(
        new OvoAudioPlayerController(std::move(soundFiles), std::move(path), selectedIndex));
    controller->player_ = controller->makePlayer();
    controller->refreshDisplay();
    return controller;
}

OvoAudioPlayerController::OvoAudioPlayerController(SoundFiles soundFiles, std::string path,
                                                   std::uint32_t selectedIndex)
    : soundFiles_(std::move(soundFiles))
    , soundFilesPath_(std::move(path))
    , selectedIndex_(selectedIndex) {}

OvoAudioPlayerController::~OvoAudioPlayerController() {
    AudioSessionRemoveInterruptionListener(this);
    stopTimer();
}

OvoAudioQueuePosition OvoAudioPlayerController::position() const {
    return {selectedIndex_, static_cast<std::uint32_t>(soundFiles_.size())};
}

std::shared_ptr<AVAudioPlayer> OvoAudioPlayerController::makePlayer() {
    std::optional<NSError> error;
    auto player = AVAudioPlayer::withContentsOfURL(selectedFile().filePath(), &error);
    if (error)
        NSLog(error->description());
    if (!player)
        return nullptr;
    player->setNumberOfLoops(0);
    player->setDelegate(weakReference<AVAudioPlayerDelegate>(this));
    return player;
}

void OvoAudioPlayerController::changeTrack(std::uint32_t index) {
    selectedIndex_ = index;
    auto player = makePlayer();
    if (player_)
        player_->stop();
    player_ = std::move(player);
    if (player_) {
        player_->setVolume(views_.volumeSlider->value());
        player_->prepareToPlay();
        player_->play();
    }
    markSelectedRow();
    refreshDisplay();
    announceTrack();
    MPRemoteControls::positionJumped(0);
}

void OvoAudioPlayerController::announceTrack() const {
    if (!player_ || !player_->isPlaying())
        return;
    const OvoAudioFile& file = selectedFile();
    UIAccessibilityAnnounce(file.artist().empty() ? file.title()
                                                  : file.title() + ", " + file.artist());
}

void OvoAudioPlayerController::startPlayer() {
    if (player_ && player_->play())
        return;
    NSLog("Could not play " + (player_ ? player_->url().absoluteString() : "(null)"));
}

void OvoAudioPlayerController::play() {
    if (player_ && player_->isPlaying())
        player_->pause();
    else
        startPlayer();
    refreshDisplay();
}

bool OvoAudioPlayerController::canGoOnToNext() const {
    return OvoAudioPlayerRules::isNextEnabled(position(), modes_);
}

void OvoAudioPlayerController::next() {
    if (canGoOnToNext())
        changeTrack(OvoAudioPlayerRules::nextIndex(position(), modes_, std::rand));
}

void OvoAudioPlayerController::previous() {
    if (canGoToPreviousTrack())
        changeTrack(OvoAudioPlayerRules::previousIndex(position()));
}

bool OvoAudioPlayerController::canGoToNextTrack() const {
    return OvoAudioPlayerRules::canGoToNextTrack(position());
}

bool OvoAudioPlayerController::canGoToPreviousTrack() const {
    return OvoAudioPlayerRules::canGoToPreviousTrack(position());
}

void OvoAudioPlayerController::toggleShuffle() {
    modes_.shuffle = !modes_.shuffle;
    showModes();
    refreshDisplay();
}

void OvoAudioPlayerController::toggleRepeat() {
    modes_ = OvoAudioPlayerRules::withRepeatAdvanced(modes_);
    showModes();
    refreshDisplay();
}

void OvoAudioPlayerController::volumeSliderMoved(const UISlider& slider) {
    if (player_)
        player_->setVolume(slider.value());
    NSUserDefaults::standardUserDefaults().setFloatForKey(slider.value(), kPlayerVolumeKey);
    if (remote_)
        remote_->update();
}

void OvoAudioPlayerController::progressSliderMoved(const UISlider& slider) {
    if (player_)
        player_->setCurrentTime(static_cast<double>(slider.value()));
    updateCurrentTimeForPlayer(player_.get());
    MPRemoteControls::positionJumped(static_cast<double>(slider.value()));
}

void OvoAudioPlayerController::dismissAudioPlayer() {
    if (player_)
        player_->stop();
    dismissModalViewControllerAnimated(true);
}

bool OvoAudioPlayerController::escapePressed() {
    dismissAudioPlayer();
    return true;
}

void OvoAudioPlayerController::viewDidAppear(bool animated) {
    UIViewController::viewDidAppear(animated);
    if (player_)
        player_->play();
    remote_ = std::make_unique<OvoAudioPlayerRemote>(*this);
    refreshDisplay();
    announceTrack();
    reading_ = std::make_unique<OvoAudioFileReading>(soundFiles_);
}

void OvoAudioPlayerController::viewWillDisappear(bool animated) {
    UIViewController::viewWillDisappear(animated);
    stopTimer();
    reading_ = nullptr;
    remote_ = nullptr;
    player_ = nullptr;
}

void OvoAudioPlayerController::stopTimer() {
    if (const auto timer = std::exchange(updateTimer_, nullptr))
        timer->invalidate();
}

void OvoAudioPlayerController::audioPlayerDidFinishPlayingSuccessfully(AVAudioPlayer&, bool flag) {
    const auto kept = shared_from_this();
    if (!flag)
        NSLog("Playback finished unsuccessfully");
    switch (OvoAudioPlayerRules::afterTrack(position(), interrupted_)) {
    case OvoAudioPlayerRules::EndOfTrack::GoToNext:
        next();
        break;
    case OvoAudioPlayerRules::EndOfTrack::PlayAgain:
        if (player_)
            player_->play();
        break;
    case OvoAudioPlayerRules::EndOfTrack::Stop:
        if (player_)
            player_->stop();
        break;
    }
    refreshDisplay();
    MPRemoteControls::positionJumped(player_ ? player_->currentTime() : 0);
}

void OvoAudioPlayerController::audioPlayerDecodeErrorDidOccurError(AVAudioPlayer&,
                                                                   const NSError& error) {
    NSLog("ERROR IN DECODE: " + error.description());
    UIAlertView::withTitle(
        "Decode Error", "Unable to decode audio file with error: " + error.localizedDescription(),
        {}, "OK")
        ->show();
}

void OvoAudioPlayerController::audioPlayerBeginInterruption(AVAudioPlayer& player) {
    std::puts("(apbi) Interruption Detected");
    std::fflush(stdout);
    NSUserDefaults::standardUserDefaults().setFloatForKey(static_cast<float>(player.currentTime()),
                                                          kInterruptionKey);
    if (remote_)
        remote_->update();
}

void OvoAudioPlayerController::audioPlayerEndInterruption(AVAudioPlayer& player) {
    std::puts("(apei) Interruption ended");
    std::fflush(stdout);
    player.play();
    NSUserDefaults::standardUserDefaults().removeObjectForKey(kInterruptionKey);
    if (remote_)
        remote_->update();
}

void interruptionListenerCallback(void* inClientData, std::uint32_t interruptionState) {
    auto* controller = static_cast<OvoAudioPlayerController*>(inClientData);
    if (interruptionState == kAudioSessionBeginInterruption)
        controller->setInterrupted(true);
    else if (interruptionState == kAudioSessionEndInterruption)
        controller->setInterrupted(false);
}

}
