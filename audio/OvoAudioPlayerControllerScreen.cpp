// Building the screen, the overlay, the flips and the track table.
#include "audio/OvoAudioPlayerController.h"
#include "audio/OvoAudioPlayerLabels.h"
#include "audio/OvoAudioPlayerRootView.h"
#include "audio/OvoAudioPlayerTableViewCell.h"
#include "platform/foundation/Weakly.h"
#include "platform/graphics/UIImage.h"
#include "platform/media/AVAudioPlayer.h"
#include "platform/media/AudioSession.h"
#include "platform/uikit/CAGradientLayer.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UIScreen.h"
#include "platform/uikit/UISlider.h"
#include "platform/uikit/UITableView.h"
#include "platform/uikit/UIViewAnimation.h"

#include <utility>

namespace vistrel {

namespace {

constexpr const char* CellIdentifier = "Cell";
constexpr double kRowHeight = 44.0;
constexpr double kFadeSeconds = 0.4;
constexpr double kFlipSeconds = 0.75;

void beginFlip(UIViewAnimationTransition transition, UIView& view) {
    UIViewAnimation::beginAnimations();
    UIViewAnimation::setAnimationDuration(kFlipSeconds);
    UIViewAnimation::setAnimationTransitionForView(transition, view, true);
}

}

void OvoAudioPlayerController::loadView() {
    setView(std::make_shared<OvoAudioPlayerRootView>(
        UIScreen::mainScreen().applicationFrame(), weakly(this, &OvoAudioPlayerController::play)));
}

void OvoAudioPlayerController::viewDidLoad() {
    UIViewController::viewDidLoad();
    view()->setBackgroundColor(UIColor::blackColor());
    updateTimer_ = nullptr;
    views_.build(*view(), weakly(this, &OvoAudioPlayerController::dismissAudioPlayer));
    connectViews();
    startAudioSession();
    refreshDisplay();
}

void OvoAudioPlayerController::connectViews() {
    using Screen = OvoAudioPlayerController;
    const std::pair<UIControl*, void (Screen::*)()> taps[] = {
        {views_.toggleButton.get(), &Screen::showSongFiles},
        {views_.artworkView.get(), &Screen::showOverlayView},
        {views_.playButton.get(), &Screen::play},
        {views_.pauseButton.get(), &Screen::play},
        {views_.nextButton.get(), &Screen::next},
        {views_.previousButton.get(), &Screen::previous},
    };
    for (const auto& [control, member] : taps)
        control->addTarget(weakly(this, member), UIControlEventTouchUpInside);
    views_.volumeSlider->addTarget(
        weakly(this, [](Screen& self) { self.volumeSliderMoved(*self.views_.volumeSlider); }),
        UIControlEventValueChanged);
    views_.songTableView->setDataSource(weakReference<UITableViewDataSource>(this));
    views_.songTableView->setDelegate(weakReference<UITableViewDelegate>(this));
}

void OvoAudioPlayerController::startAudioSession() {
    AudioSessionInitialize(interruptionListenerCallback, this);
    AudioSessionSetActive(true);
    AudioSessionSetProperty(kAudioSessionProperty_AudioCategory,
                            kAudioSessionCategory_MediaPlayback);
}

void OvoAudioPlayerController::viewDidUnload() {
    views_.reflectionView = nullptr;
    views_.songTableView->setDataSource({});
    views_.songTableView->setDelegate({});
}

bool OvoAudioPlayerController::isTableShown() const {
    return views_.songTableView->superview() != nullptr;
}

void OvoAudioPlayerController::makeOverlay() {
    using Screen = OvoAudioPlayerController;
    views_.buildOverlay(view()->bounds().size.width);
    views_.progressSlider->setMaximumValue(static_cast<float>(player_ ? player_->duration() : 0));
    views_.progressSlider->addTarget(
        weakly(this, [](Screen& self) { self.progressSliderMoved(*self.views_.progressSlider); }),
        UIControlEventValueChanged);
    views_.repeatButton->addTarget(weakly(this, &Screen::toggleRepeat),
                                   UIControlEventTouchUpInside);
    views_.shuffleButton->addTarget(weakly(this, &Screen::toggleShuffle),
                                    UIControlEventTouchUpInside);
    showModes();
}

void OvoAudioPlayerController::showOverlayView() {
    if (!views_.overlayView)
        makeOverlay();
    refreshDisplay();
    fadeOverlay(views_.overlayView->superview() == nullptr || overlayIsLeaving_);
}

void OvoAudioPlayerController::fadeOverlay(bool in) {
    UIView& overlay = *views_.overlayView;
    if (in && !overlay.superview()) {
        UIViewAnimation::withoutAnimation([&] { overlay.setAlpha(0); });
        views_.containerView->addSubview(views_.overlayView);
    }
    overlayIsLeaving_ = !in;
    UIViewAnimation::beginAnimations();
    UIViewAnimation::setAnimationDuration(kFadeSeconds);
    UIViewAnimation::setAnimationCurve(UIViewAnimationCurve::EaseIn);
    overlay.setAlpha(in ? 1 : 0);
    if (!in)
        UIViewAnimation::setAnimationDidStop(
            weakly(this, [](OvoAudioPlayerController& self, bool) { self.overlayHasFaded(); }));
    UIViewAnimation::commitAnimations();
}

/// A tap may have brought it back while it was fading out.
void OvoAudioPlayerController::overlayHasFaded() {
    if (std::exchange(overlayIsLeaving_, false))
        views_.overlayView->removeFromSuperview();
}

void OvoAudioPlayerController::showSongFiles() {
    if (isTableShown())
        flipToCover();
    else
        flipToTable();
}

void OvoAudioPlayerController::flipToTable() {
    constexpr auto kTransition = UIViewAnimationTransition::FlipFromRight;
    beginFlip(kTransition, *views_.toggleButton);
    views_.toggleButton->setImageForState(views_.artworkView->currentImage(),
                                          UIControlState::Normal);
    UIViewAnimation::commitAnimations();

    beginFlip(kTransition, *views_.containerView);
    views_.artworkView->setImageForState(audioPlayerPicture("AudioPlayerTableBackground"),
                                         UIControlState::Normal);
    views_.reflectionView->removeFromSuperview();
    if (views_.overlayView)
        views_.overlayView->removeFromSuperview();
    overlayIsLeaving_ = false;
    views_.containerView->addSubview(views_.songTableView);
    views_.containerView->insertGradientLayerAtIndex(views_.gradientLayer, 0);
    UIViewAnimation::commitAnimations();
}

void OvoAudioPlayerController::flipToCover() {
    constexpr auto kTransition = UIViewAnimationTransition::FlipFromLeft;
    beginFlip(kTransition, *views_.toggleButton);
    views_.toggleButton->setImageForState(albumInfoPicture(), UIControlState::Normal);
    UIViewAnimation::commitAnimations();

    beginFlip(kTransition, *views_.containerView);
    views_.songTableView->removeFromSuperview();
    showCover();
    views_.containerView->addSubview(views_.reflectionView);
    views_.containerView->removeGradientLayer(*views_.gradientLayer);
    UIViewAnimation::commitAnimations();
}

int OvoAudioPlayerController::numberOfSectionsInTableView(UITableView&) {
    return 1;
}

int OvoAudioPlayerController::tableViewNumberOfRowsInSection(UITableView&, int) {
    return static_cast<int>(soundFiles_.size());
}

std::shared_ptr<UITableViewCell>
OvoAudioPlayerController::tableViewCellForRowAtIndexPath(UITableView& tableView,
                                                         const NSIndexPath& indexPath) {
    auto cell = std::dynamic_pointer_cast<OvoAudioPlayerTableViewCell>(
        tableView.dequeueReusableCellWithIdentifier(CellIdentifier));
    if (!cell)
        cell = std::make_shared<OvoAudioPlayerTableViewCell>(CellIdentifier);
    const auto row = static_cast<std::uint32_t>(indexPath.row);
    const OvoAudioFile& file = *soundFiles_[row];
    cell->setTitle(file.title());
    cell->setNumber(OvoAudioPlayerLabels::rowNumber(indexPath.row));
    cell->setDuration(file.durationInMinutes());
    cell->setIsEven(row % 2 == 1);
    cell->setIsSelectedIndex(row == selectedIndex_);
    return cell;
}

void OvoAudioPlayerController::tableViewDidSelectRowAtIndexPath(UITableView& tableView,
                                                                const NSIndexPath& indexPath) {
    tableView.deselectRowAtIndexPath(indexPath, true);
    changeTrack(static_cast<std::uint32_t>(indexPath.row));
}

/// Only the row of the player's track is marked.
void OvoAudioPlayerController::markSelectedRow() {
    const UITableView& table = *views_.songTableView;
    for (const auto& indexPath : table.indexPathsForVisibleRows())
        if (const auto cell = std::dynamic_pointer_cast<OvoAudioPlayerTableViewCell>(
                table.cellForRowAtIndexPath(indexPath)))
            cell->setIsSelectedIndex(static_cast<std::uint32_t>(indexPath.row) == selectedIndex_);
}

std::optional<double>
OvoAudioPlayerController::tableViewHeightForRowAtIndexPath(UITableView&, const NSIndexPath&) {
    return kRowHeight;
}

std::optional<bool> OvoAudioPlayerController::tableViewCanEditRowAtIndexPath(UITableView&,
                                                                             const NSIndexPath&) {
    return false;
}

}
