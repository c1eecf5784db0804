#include "platform/media/MPMoviePlayerController.h"

#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSNotificationCenter.h"
#include "platform/foundation/NSRunLoop.h"
#include "platform/foundation/NSTimer.h"
#include "platform/foundation/Weakly.h"
#include "platform/host/Host.h"
#include "platform/media/MPMovieRemote.h"
#include "platform/media/MPMovieView.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIWindow.h"

#include <numbers>
#include <utility>

namespace vistrel {

namespace {

/// Often enough that the time labels never skip a second.
constexpr double kRefreshInterval = 0.25;
constexpr CGRect kLandscape = {{0, 0}, {480, 320}};

MPMoviePlayerController::Interface offeredInterface =
    MPMoviePlayerController::Interface::LoadStates;

}

void MPMoviePlayerController::setOfferedInterface(Interface offered) {
    offeredInterface = offered;
}

std::shared_ptr<MPMoviePlayerController> MPMoviePlayerController::withContentURL(const NSURL& url) {
    std::shared_ptr<MPMoviePlayerController> player(new MPMoviePlayerController(url));
    if (player->playback_)
        player->playback_->setClient(player.get());
    player->makeView();
    if (!player->offersLoadState())
        player->prepareToPlay();
    return player;
}

void MPMoviePlayerController::prepareEngine() {
    host::current().media->warmUp();
}

MPMoviePlayerController::MPMoviePlayerController(const NSURL& url)
    : url_(url)
    , interface_(offeredInterface)
    , playback_(host::current().media->createMoviePlayback(url.absoluteString())) {}

MPMoviePlayerController::~MPMoviePlayerController() {
    end();
    view_->setPlayback(nullptr);
    if (playback_)
        playback_->setClient(nullptr);
}

void MPMoviePlayerController::makeView() {
    MPMovieControls::Actions actions;
    actions.done =
        weakly(this, [](auto& player) { player.finish(MPMovieFinishReason::UserExited); });
    actions.togglePlay = weakly(this, &MPMoviePlayerController::togglePlay);
    actions.seek = weakly(this, &MPMoviePlayerController::setCurrentPlaybackTime);
    actions.scrub = weakly(this, &MPMoviePlayerController::scrubTo);
    actions.setVolume = weakly(this, &MPMoviePlayerController::setVolume);
    view_ = std::make_shared<MPMovieView>(kLandscape, std::move(actions));
    view_->setPlayback(playback_.get());
    view_->setControlsWanted(!offersLoadState());
}

void MPMoviePlayerController::setControlStyle(MPMovieControlStyle style) {
    view_->setControlsWanted(style == MPMovieControlStyle::Fullscreen);
}

void MPMoviePlayerController::setFullscreen(bool fullscreen) {
    UIApplication::sharedApplication().setStatusBarHidden(fullscreen);
}

std::shared_ptr<UIView> MPMoviePlayerController::view() {
    return view_;
}

void MPMoviePlayerController::prepareToPlay() {
    if (playback_ && !finished_) {
        playback_->prepare();
        return;
    }
    NSRunLoop::performAfterDelay(
        0, weakly(this, [](auto& player) { player.playbackDidFail("There is no player."); }));
}

void MPMoviePlayerController::play() {
    if (finished_ || !playback_)
        return;
    if (!offersLoadState())
        showByItself();
    setPlaying(playback_->play());
    if (!remote_)
        remote_ = std::make_unique<MPMovieRemote>(*this, url_);
    if (!refreshTimer_)
        refreshTimer_ =
            NSTimer::scheduledTimer(kRefreshInterval, NSTimer::Repeats::Yes,
                                    weakly(this, &MPMoviePlayerController::refreshView));
    refreshView();
}

void MPMoviePlayerController::setPlaying(bool playing) {
    if (std::exchange(playing_, playing) != playing)
        UIApplication::sharedApplication().setIdleTimerDisabled(playing);
}

void MPMoviePlayerController::showByItself() {
    UIWindow* window = UIApplication::sharedApplication().keyWindow();
    if (std::exchange(showsItself_, true) || !window)
        return;
    setFullscreen(true);
    view_->setBounds(kLandscape);
    view_->setCenter({160, 240});
    view_->setTransform(CGAffineTransformMakeRotation(std::numbers::pi / 2));
    window->addSubview(view_);
}

void MPMoviePlayerController::pause() {
    setPlaying(false);
    if (playback_)
        playback_->pause();
    refreshView();
}

void MPMoviePlayerController::togglePlay() {
    if (playing_)
        pause();
    else
        play();
}

void MPMoviePlayerController::stop() {
    end();
}

double MPMoviePlayerController::currentPlaybackTime() const {
    return playback_ ? playback_->currentTime() : 0;
}

void MPMoviePlayerController::setCurrentPlaybackTime(double seconds) {
    if (!playback_ || finished_)
        return;
    playback_->setCurrentTime(seconds);
    if (remote_)
        MPRemoteControls::positionJumped(currentPlaybackTime());
    refreshView();
}

void MPMoviePlayerController::scrubTo(double seconds) {
    if (!playback_ || finished_)
        return;
    playback_->scrubTo(seconds);
    refreshView();
}

float MPMoviePlayerController::volume() const {
    return playback_ ? playback_->volume() : 0;
}

void MPMoviePlayerController::setVolume(float volume) {
    if (!playback_)
        return;
    playback_->setVolume(volume);
    refreshView();
}

double MPMoviePlayerController::duration() const {
    if (finished_)
        return durationAtEnd_;
    return playback_ ? playback_->duration() : 0;
}

unsigned MPMoviePlayerController::framesShown() const {
    return playback_ ? playback_->framesShown() : 0;
}

void MPMoviePlayerController::refreshView() {
    view_->refresh(playing_);
    if (remote_)
        remote_->update();
}

void MPMoviePlayerController::setLoadState(unsigned state) {
    if (std::exchange(loadState_, state) != state)
        NSNotificationCenter::defaultCenter().postNotification(
            MPMoviePlayerLoadStateDidChangeNotification, this);
}

void MPMoviePlayerController::playbackDidBecomeReady() {
    const auto self = shared_from_this();
    refreshView();
    if (offersLoadState())
        setLoadState(MPMovieLoadStatePlayable | MPMovieLoadStatePlaythroughOK);
    else
        NSNotificationCenter::defaultCenter().postNotification(
            MPMoviePlayerContentPreloadDidFinishNotification, this);
}

void MPMoviePlayerController::playbackStalled(bool stalled) {
    const auto self = shared_from_this();
    if (offersLoadState())
        setLoadState(stalled ? MPMovieLoadStatePlayable | MPMovieLoadStateStalled
                             : MPMovieLoadStatePlayable | MPMovieLoadStatePlaythroughOK);
}

void MPMoviePlayerController::playbackDidEnd() {
    finish(MPMovieFinishReason::PlaybackEnded);
}

void MPMoviePlayerController::playbackDidFail(const std::string& message) {
    NSLog("Movie player: " + message);
    finish(MPMovieFinishReason::PlaybackError);
}

void MPMoviePlayerController::playbackInterrupted(bool begins) {
    // After a call, a film stays paused until the viewer resumes it.
    if (begins)
        setPlaying(false);
    view_->controls().show();
    refreshView();
}

void MPMoviePlayerController::end() {
    finished_ = true;
    setPlaying(false);
    remote_.reset();
    if (refreshTimer_)
        refreshTimer_->invalidate();
    refreshTimer_.reset();
    if (playback_) {
        durationAtEnd_ = playback_->duration(); // a stopped player no longer knows it
        playback_->stop();
    }
    if (std::exchange(showsItself_, false))
        view_->removeFromSuperview();
}

void MPMoviePlayerController::finish(MPMovieFinishReason reason) {
    if (finished_)
        return;
    const auto self = shared_from_this();
    end();
    NSNotificationCenter::defaultCenter().postNotification(
        MPMoviePlayerPlaybackDidFinishNotification, this,
        Value(Value::Dictionary{
            {MPMoviePlayerPlaybackDidFinishReasonUserInfoKey, static_cast<int>(reason)}}));
}

}
