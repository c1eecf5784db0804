#include "web/OvoMoviePlayerViewController.h"

#include "platform/foundation/Weakly.h"
#include "platform/media/MPMoviePlayerController.h"
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIScreen.h"
#include "settings/Manners.h"
#include "web/MoviePositions.h"

#include <utility>

namespace vistrel {

namespace {

constexpr CGRect kLandscapeBounds = CGRectMake(0, 0, 480, 320);
constexpr CGPoint kScreenCenter{160, 240};
constexpr double kQuarterTurn = 1.5707964F;

}

std::shared_ptr<OvoMoviePlayerViewController>
OvoMoviePlayerViewController::withURL(const NSURL& url) {
    return std::make_shared<OvoMoviePlayerViewController>(url);
}

OvoMoviePlayerViewController::OvoMoviePlayerViewController(const NSURL& url)
    : movieURL_(url) {}

OvoMoviePlayerViewController::~OvoMoviePlayerViewController() {
    NSNotificationCenter::defaultCenter().removeObserver(this);
}

void OvoMoviePlayerViewController::loadView() {
    auto view = std::make_shared<UIView>(UIScreen::mainScreen().applicationFrame());
    view->setBackgroundColor(UIColor::blackColor());
    setView(view);
}

void OvoMoviePlayerViewController::readyPlayer() {
    mp_ = MPMoviePlayerController::withContentURL(movieURL_);
    // Observed before preparing: a player that fails at once must be heard.
    observe(MPMoviePlayerPlaybackDidFinishNotification,
            &OvoMoviePlayerViewController::moviePlayBackDidFinish);
    NSNotificationCenter::defaultCenter().addObserver(
        this, UIApplicationWillTerminateNotification, nullptr,
        weakly(this, [](OvoMoviePlayerViewController& self, const NSNotification&) {
            self.rememberPosition();
        }));
    if (!mp_->offersLoadState()) {
        observe(MPMoviePlayerContentPreloadDidFinishNotification,
                &OvoMoviePlayerViewController::moviePreloadDidFinish);
        return;
    }
    mp_->setControlStyle(MPMovieControlStyle::Fullscreen);
    mp_->setFullscreen(true);
    UIApplication::sharedApplication().setStatusBarOrientation(
        UIInterfaceOrientation::LandscapeRight, false);
    view()->setBounds(kLandscapeBounds);
    view()->setCenter(kScreenCenter);
    view()->setTransform(CGAffineTransformMakeRotation(kQuarterTurn));
    mp_->view()->setFrame(kLandscapeBounds);
    view()->addSubview(mp_->view());
    observe(MPMoviePlayerLoadStateDidChangeNotification,
            &OvoMoviePlayerViewController::moviePlayerLoadStateChanged);
    mp_->prepareToPlay();
}

void OvoMoviePlayerViewController::observe(
    const char* name, void (OvoMoviePlayerViewController::*handler)(const NSNotification&)) {
    NSNotificationCenter::defaultCenter().addObserver(this, name, nullptr, weakly(this, handler));
}

void OvoMoviePlayerViewController::moviePlayerLoadStateChanged(const NSNotification&) {
    if (mp_->loadState() == MPMovieLoadStateUnknown)
        return;
    NSNotificationCenter::defaultCenter().removeObserver(
        this, MPMoviePlayerLoadStateDidChangeNotification);
    start();
}

void OvoMoviePlayerViewController::moviePreloadDidFinish(const NSNotification&) {
    NSNotificationCenter::defaultCenter().removeObserver(
        this, MPMoviePlayerContentPreloadDidFinishNotification);
    start();
}

void OvoMoviePlayerViewController::start() {
    if (const double left =
            manners().remembersPositions ? MoviePositions::positionOf(movieURL_) : 0)
        mp_->setCurrentPlaybackTime(left);
    hasStarted_ = true;
    mp_->play();
}

void OvoMoviePlayerViewController::moviePlayBackDidFinish(const NSNotification& notification) {
    const Value* reason =
        notification.userInfo.find(MPMoviePlayerPlaybackDidFinishReasonUserInfoKey);
    if (reason && reason->integerValue() == static_cast<int>(MPMovieFinishReason::PlaybackError)) {
        hasStarted_ = false; // a film that cannot be played has no position
        UIAlertView::withTitle("Failed to Play",
                               "Unable to play video. Please try downloading it instead", {}, "OK")
            ->show();
    }
    leave();
    dismissModalViewControllerAnimated(true);
}

void OvoMoviePlayerViewController::viewWillDisappear(bool animated) {
    UIViewController::viewWillDisappear(animated);
    leave();
}

void OvoMoviePlayerViewController::rememberPosition() {
    if (hasStarted_ && manners().remembersPositions)
        MoviePositions::leave(movieURL_, mp_->currentPlaybackTime(), mp_->duration());
}

void OvoMoviePlayerViewController::leave() {
    if (!mp_ || std::exchange(hasLeft_, true))
        return;
    NSNotificationCenter::defaultCenter().removeObserver(this);
    rememberPosition();
    mp_->stop();
    auto& application = UIApplication::sharedApplication();
    application.setStatusBarHidden(false);
    application.setStatusBarOrientation(UIInterfaceOrientation::Portrait, false);
}

bool OvoMoviePlayerViewController::shouldAutorotateToInterfaceOrientation(
    UIInterfaceOrientation orientation) {
    return UIInterfaceOrientationIsLandscape(orientation);
}

}
