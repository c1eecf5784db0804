#pragma once
#include "platform/uikit/UIApplicationDelegate.h"

#include <memory>

namespace vistrel {
class UIImageView;
class UINavigationController;
class UIWindow;

/// Shows the main menu under a splash picture that grows and fades away, and creates the
/// downloads folder if needed.
class VistrelAppDelegate : public UIApplicationDelegate,
                           public std::enable_shared_from_this<VistrelAppDelegate> {
public:
    VistrelAppDelegate();
    ~VistrelAppDelegate() override;

    const std::shared_ptr<UIWindow>& window() const { return window_; }
    void setWindow(std::shared_ptr<UIWindow> window);
    const std::shared_ptr<UINavigationController>& navigationController() const {
        return navigationController_;
    }
    void setNavigationController(std::shared_ptr<UINavigationController> controller);

    void applicationDidFinishLaunching(UIApplication& application) override;
    /// Shows a page on top of whatever is open, or offers to copy a file into the library.
    bool applicationHandleOpenURL(UIApplication& application, const NSURL& url) override;
    void startupAnimationDone();

private:
    void showSplash();
    void ensureDownloadsFolder();

    std::shared_ptr<UIWindow> window_;
    std::shared_ptr<UINavigationController> navigationController_;
    std::shared_ptr<UIImageView> splashView_;
};

}
