// Shows the player's state on the screen.
#include "audio/OvoAudioPlayerController.h"
#include "audio/OvoAudioPlayerLabels.h"
#include "audio/OvoAudioPlayerReflection.h"
#include "audio/OvoAudioPlayerRemote.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSTimer.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/foundation/Weakly.h"
#include "platform/graphics/UIImage.h"
#include "platform/media/AVAudioPlayer.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UISlider.h"
#include "settings/Manners.h"

#include <utility>

namespace vistrel {

namespace {

constexpr double kUpdateInterval = 0.01;
constexpr double kReflectionShare = 0.65;

/// The stored volume; without one, the player's, which is 0 for a file that cannot be opened.
float volumeToShow(const AVAudioPlayer* player, float shown) {
    const float stored = NSUserDefaults::standardUserDefaults().floatForKey(kPlayerVolumeKey);
    if (stored != 0.0F)
        return stored;
    if (player)
        return player->volume();
    return manners().keepsVolume ? shown : 0;
}

void setModePicture(UIButton& button, const char* name, const char* spokenState) {
    button.setImageForState(audioPlayerPicture(name), UIControlState::Normal);
    auto element = button.accessibilityElement();
    element.value = NSLocalizedString(spokenState);
    button.setAccessibility(std::move(element));
}

const char* spokenRepeat(OvoAudioPlayModes modes) {
    if (modes.repeatOne)
        return "one";
    return modes.repeatAll ? "all" : "off";
}

}

void OvoAudioPlayerController::refreshDisplay() {
    updateViewForPlayerInfo(player_.get());
    updateViewForPlayerState(player_.get());
    if (remote_)
        remote_->update();
}

void OvoAudioPlayerController::updateViewForPlayerInfo(AVAudioPlayer* player) {
    view();
    if (views_.overlayView) {
        views_.indexLabel->setText(OvoAudioPlayerLabels::place(position()));
        views_.progressSlider->setMaximumValue(static_cast<float>(player ? player->duration() : 0));
    }
    views_.volumeSlider->setValue(volumeToShow(player, views_.volumeSlider->value()));
}

void OvoAudioPlayerController::updateViewForPlayerState(AVAudioPlayer* player) {
    const auto& root = view();
    const OvoAudioFile& file = selectedFile();
    views_.titleLabel->setText(file.title());
    views_.artistLabel->setText(file.artist());
    views_.albumLabel->setText(file.album());
    updateCurrentTimeForPlayer(player);
    stopTimer();
    if (player && player->isPlaying()) {
        views_.playButton->removeFromSuperview();
        root->addSubview(views_.pauseButton);
        updateTimer_ =
            NSTimer::scheduledTimer(kUpdateInterval, NSTimer::Repeats::Yes,
                                    weakly(this, &OvoAudioPlayerController::updateCurrentTime));
    } else {
        views_.pauseButton->removeFromSuperview();
        root->addSubview(views_.playButton);
    }
    if (!isTableShown())
        showCover();
    views_.nextButton->setEnabled(canGoOnToNext());
    views_.previousButton->setEnabled(canGoToPreviousTrack());
}

void OvoAudioPlayerController::showCover() {
    UIButton& artwork = *views_.artworkView;
    artwork.setImageForState(selectedFile().coverImage(), UIControlState::Normal);
    if (views_.reflectionView)
        views_.reflectionView->setImage(reflectedImageWithHeight(
            artwork, static_cast<unsigned>(artwork.bounds().size.height * kReflectionShare)));
}

void OvoAudioPlayerController::showModes() {
    if (!views_.overlayView)
        return;
    setModePicture(*views_.repeatButton, OvoAudioPlayerRules::repeatPicture(modes_),
                   spokenRepeat(modes_));
    setModePicture(*views_.shuffleButton, OvoAudioPlayerRules::shufflePicture(modes_),
                   modes_.shuffle ? "on" : "off");
}

void OvoAudioPlayerController::updateCurrentTime() {
    updateCurrentTimeForPlayer(player_.get());
}

/// Called a hundred times a second while playing. Labels and slider redraw only when they change.
void OvoAudioPlayerController::updateCurrentTimeForPlayer(AVAudioPlayer* player) {
    if (!views_.overlayView)
        return;
    const double time = player ? player->currentTime() : 0;
    const double duration = player ? player->duration() : 0;
    views_.currentTime->setText(OvoAudioPlayerLabels::elapsed(time));
    views_.duration->setText(OvoAudioPlayerLabels::remaining(time, duration));
    views_.progressSlider->setValue(static_cast<float>(time));
}

}
