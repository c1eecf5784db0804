#pragma once
#include "platform/foundation/UIApplicationNotifications.h"
#include "platform/graphics/CGGeometry.h"
#include "platform/uikit/UIInterfaceOrientation.h"

#include <functional>
#include <memory>
#include <string>

namespace vistrel {
class NSURL;
class SceneVisitor;
class UIApplicationDelegate;
class UIEventDispatcher;
class UIFocusRing;
class UIScreenView;
class UIStatusBar;
class UIView;
class UIWindow;

enum class UIApplicationState { Active, Inactive, Background };

/// The running application: its windows, status bar, and requests to the system. The host's window
/// drives it through the section marked for it.
class UIApplication {
public:
    static UIApplication& sharedApplication();
    /// Ends the shared application (tests make a new one for each case).
    static void resetSharedApplication();

    void setDelegate(std::shared_ptr<UIApplicationDelegate> delegate);
    UIApplicationDelegate* delegate() const { return delegate_.get(); }
    /// The window on screen that was made key last, else the frontmost one; null for none.
    UIWindow* keyWindow() const;
    /// The frontmost visible window that takes touches: what touches and keys can reach.
    UIWindow* frontWindow() const;
    UIApplicationState applicationState() const { return state_; }

    void setStatusBarHidden(bool hidden);
    bool isStatusBarHidden() const { return statusBarHidden_; }
    void setStatusBarOrientation(UIInterfaceOrientation orientation, bool animated);
    UIInterfaceOrientation statusBarOrientation() const { return statusBarOrientation_; }
    /// In the portrait screen's coordinates: 320 x 20, in landscape 20 x 480; empty while hidden.
    CGRect statusBarFrame() const;
    void setNetworkActivityIndicatorVisible(bool visible);
    bool isNetworkActivityIndicatorVisible() const { return networkActivity_; }
    void setIdleTimerDisabled(bool disabled);
    bool isIdleTimerDisabled() const { return idleTimerDisabled_; }

    /// Shows a notification of the desktop. Nothing happens while the window is in front: its
    /// screens tell the user then.
    void presentLocalNotification(const std::string& title, const std::string& text);

    bool canOpenURL(const NSURL& url);
    bool openURL(const NSURL& url);

    // For the host's window.
    /// Calls the delegate, posts the notification.
    void finishLaunching();
    void terminate();
    /// Tells the delegate and every screen that memory is low.
    void receiveMemoryWarning();
    /// Window shown, hidden, focused: posts the matching notifications.
    void setState(UIApplicationState state);
    /// The whole screen, back to front, and the focus ring.
    void walkScreen(SceneVisitor& visitor);
    /// The root of the view tree (windows and status bar as children, by level); 320 x 480.
    UIView& screenView();
    /// Entry point for touches and keys.
    UIEventDispatcher& events() { return *events_; }

    // For windows.
    /// Puts the window on the screen, above those of its level or lower.
    void showWindow(UIWindow& window);
    void setKeyWindow(UIWindow& window);

    ~UIApplication();

private:
    UIApplication();
    static std::unique_ptr<UIApplication>& instance();
    void placeStatusBar();

    std::shared_ptr<UIApplicationDelegate> delegate_;
    std::shared_ptr<UIScreenView> screen_;
    std::shared_ptr<UIStatusBar> statusBar_;
    std::unique_ptr<UIEventDispatcher> events_;
    std::shared_ptr<UIFocusRing> focusRing_;
    std::weak_ptr<UIView> keyWindow_;
    UIApplicationState state_ = UIApplicationState::Inactive;
    bool statusBarHidden_ = false;
    bool networkActivity_ = false;
    bool idleTimerDisabled_ = false;
    UIInterfaceOrientation statusBarOrientation_ = UIInterfaceOrientation::Portrait;
};

}
