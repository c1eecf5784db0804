#pragma once
#include "platform/foundation/NSNotificationCenter.h"
#include "platform/foundation/NSURL.h"
#include "platform/uikit/UIViewController.h"

#include <memory>

namespace vistrel {
class MPMoviePlayerController;

/// Plays one video in landscape, full screen, and closes itself when playback ends. Present it
/// modally, then call readyPlayer.
class OvoMoviePlayerViewController : public UIViewController {
public:
    static std::shared_ptr<OvoMoviePlayerViewController> withURL(const NSURL& url);
    explicit OvoMoviePlayerViewController(const NSURL& url);
    ~OvoMoviePlayerViewController() override;

    const std::shared_ptr<MPMoviePlayerController>& mp() const { return mp_; }
    const NSURL& movieURL() const { return movieURL_; }

    void loadView() override;
    void readyPlayer();
    void viewWillDisappear(bool animated) override;
    bool shouldAutorotateToInterfaceOrientation(UIInterfaceOrientation orientation) override;

private:
    void moviePlayerLoadStateChanged(const NSNotification& notification);
    void moviePreloadDidFinish(const NSNotification& notification);
    void start();
    void rememberPosition();
    /// Stops and gives the status bar back, however the screen is left; once.
    void leave();
    void moviePlayBackDidFinish(const NSNotification& notification);
    void observe(const char* name,
                 void (OvoMoviePlayerViewController::*handler)(const NSNotification&));

    std::shared_ptr<MPMoviePlayerController> mp_;
    NSURL movieURL_;
    bool hasStarted_ = false;
    bool hasLeft_ = false;
};

}
