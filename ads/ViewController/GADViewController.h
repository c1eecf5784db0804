#pragma once
#include "ads/Utility/GADSupportedOrientations.h"
#include "platform/uikit/UIViewController.h"

#include <memory>
#include <string_view>

namespace vistrel {
class GADDelegateManager;
class GADViewControllerPrivate;
class GADWebView;

/// Base of the full-screen screens of an ad. The first one over the host notifies the host's
/// delegate, hides the status bar and keeps the device awake, and restores the previous state when
/// it is dismissed. A screen that is presented from another ad screen does none of this. Keeps
/// itself alive from presentFromViewController to relinquishScreen.
class GADViewController : public UIViewController {
public:
    GADViewController();
    ~GADViewController() override;

    /// Whether the screen is presented. A missing controller is logged; one that presents something
    /// else already is left alone, without an event.
    bool presentFromViewController(const std::shared_ptr<UIViewController>& controller);
    /// Dismisses the screen, as the Done and close buttons and the page's "close" command do.
    void relinquishScreen();

    static GADSupportedOrientations orientationFromString(std::string_view text) {
        return gadSupportedOrientationsFromString(text);
    }
    GADSupportedOrientations supportedOrientations() const;
    void setSupportedOrientations(GADSupportedOrientations orientations);
    /// The page of the ad that opened this screen; not retained.
    std::shared_ptr<GADWebView> openingWebView() const;
    void setOpeningWebView(std::weak_ptr<GADWebView> webView);
    /// Empty when none has been set.
    std::shared_ptr<GADDelegateManager> delegateManager() const;
    void setDelegateManager(std::shared_ptr<GADDelegateManager> manager);
    bool statusBarWasHidden() const;
    void setStatusBarWasHidden(bool hidden);
    /// Whether the screen is presented over the host's screen and not over another ad screen.
    bool isFirstGADViewController() const;

    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;
    void viewDidDisappear(bool animated) override;
    bool shouldAutorotateToInterfaceOrientation(UIInterfaceOrientation orientation) override;
    bool escapePressed() override;

protected:
    explicit GADViewController(std::shared_ptr<GADViewControllerPrivate> privateObject);
    /// The page that is notified of rotations; null for none.
    virtual std::shared_ptr<GADWebView> rotatingWebView() const { return nullptr; }
    std::shared_ptr<GADViewControllerPrivate> privateObject() const;

private:
    void coverHost(GADViewControllerPrivate& vars);
    void uncoverHost(const GADViewControllerPrivate& vars);
    bool hidesStatusBar() const;
    void letGo();
};

}
