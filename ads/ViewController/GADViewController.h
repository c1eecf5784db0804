#pragma once
#include "ads/Utility/GADSupportedOrientations.h"
#include "platform/uikit/UIViewController.h"

#include <memory>
#include <string_view>

namespace vistrel {
class GADDelegateManager;
class GADViewControllerPrivate;
class GADWebView;

/// Base of the full-screen screens of an ad. The first one over the host tells the host's delegate,
/// hides the status bar and keeps the device awake; when it goes, it gives back what it found. A
/// screen that is presented from another ad screen does none of that. Keeps itself alive from
/// presentFromViewController to relinquishScreen.
class GADViewController : public UIViewController {
public:
    GADViewController();
    ~GADViewController() override;

    /// Null is logged and presents nothing.
    void presentFromViewController(const std::shared_ptr<UIViewController>& controller);
    /// Dismisses the screen; the Done and close buttons do this, and the page's "close" command.
    void relinquishScreen();

    static GADSupportedOrientations orientationFromString(std::string_view text) {
        return gadSupportedOrientationsFromString(text);
    }
    GADSupportedOrientations supportedOrientations() const;
    void setSupportedOrientations(GADSupportedOrientations orientations);
    /// The page of the ad that opened this screen; not retained.
    std::shared_ptr<GADWebView> openingWebView() const;
    void setOpeningWebView(std::weak_ptr<GADWebView> webView);
    /// An empty one when none has been set.
    std::shared_ptr<GADDelegateManager> delegateManager() const;
    void setDelegateManager(std::shared_ptr<GADDelegateManager> manager);
    bool statusBarWasHidden() const;
    void setStatusBarWasHidden(bool hidden);
    /// Presented over the host's screen and not over another ad screen.
    bool isFirstGADViewController() const;

    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;
    void viewDidDisappear(bool animated) override;
    bool shouldAutorotateToInterfaceOrientation(UIInterfaceOrientation orientation) override;
    bool escapePressed() override;

protected:
    explicit GADViewController(std::shared_ptr<GADViewControllerPrivate> privateObject);
    /// The page to tell of rotations; null for none.
    virtual std::shared_ptr<GADWebView> rotatingWebView() const { return nullptr; }
    std::shared_ptr<GADViewControllerPrivate> privateObject() const;

private:
    void coverHost(GADViewControllerPrivate& vars);
    void uncoverHost(const GADViewControllerPrivate& vars);
    bool hidesStatusBar() const;
    void letGo();
};

}
