#include "shell/VistrelAppDelegate.h"

#include "downloads/FileImport.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSURL.h"
#include "platform/foundation/Weakly.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIViewAnimation.h"
#include "platform/uikit/UIWindow.h"
#include "shell/RootViewController.h"
#include "web/DownloadableMedia.h"
#include "web/WebBrowserViewController.h"

#include <utility>

namespace vistrel {

VistrelAppDelegate::VistrelAppDelegate() = default;

VistrelAppDelegate::~VistrelAppDelegate() = default;

void VistrelAppDelegate::setWindow(std::shared_ptr<UIWindow> window) {
    window_ = std::move(window);
}

void VistrelAppDelegate::setNavigationController(
    std::shared_ptr<UINavigationController> controller) {
    navigationController_ = std::move(controller);
}

void VistrelAppDelegate::applicationDidFinishLaunching(UIApplication&) {
    window_->addSubview(navigationController_->view());
    window_->makeKeyAndVisible();
    showSplash();
    ensureDownloadsFolder();
}

bool VistrelAppDelegate::applicationHandleOpenURL(UIApplication&, const NSURL& url) {
    if (url.isFileURL()) {
        const auto menu = std::dynamic_pointer_cast<RootViewController>(
            navigationController_->viewControllers().front());
        FileImport::offer(url, *navigationController_, menu->downloads());
        return true;
    }
    if (!url.isHTTP())
        return false;
    navigationController_->pushViewController(
        WebBrowserViewController::withTitleURL(url.host(), url.absoluteString()), false);
    // A modal screen above may ask first, as a mail that is being written does.
    if (const auto modal = navigationController_->modalViewController())
        modal->escapePressed();
    return true;
}

void VistrelAppDelegate::showSplash() {
    splashView_ = std::make_shared<UIImageView>(CGRectMake(0, 0, 320, 480));
    splashView_->setImage(UIImage::imageNamed("Default.png"));
    window_->addSubview(splashView_);
    window_->bringSubviewToFront(*splashView_);

    UIViewAnimation::beginAnimations();
    UIViewAnimation::setAnimationDuration(0.5);
    UIViewAnimation::setAnimationTransitionForView(UIViewAnimationTransition::None, *window_, true);
    UIViewAnimation::setAnimationDidStop(
        weakly(this, [](VistrelAppDelegate& self, bool) { self.startupAnimationDone(); }));
    splashView_->setAlpha(0.0);
    splashView_->setFrame(CGRectMake(-60, -60, 440, 600));
    UIViewAnimation::commitAnimations();
}

void VistrelAppDelegate::ensureDownloadsFolder() {
    auto& files = NSFileManager::defaultManager();
    if (files.fileExistsAtPath(kDownloadsFolder))
        return;
    NSLog("Creating Downloads Directory");
    (void)files.createDirectoryAtPath(kDownloadsFolder, false);
}

void VistrelAppDelegate::startupAnimationDone() {
    if (!splashView_)
        return;
    splashView_->removeFromSuperview();
    splashView_.reset();
}

}
