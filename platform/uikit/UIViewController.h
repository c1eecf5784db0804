#pragma once
#include "platform/uikit/UIInterfaceOrientation.h"
#include "platform/uikit/UIView.h"

#include <memory>
#include <string>

namespace vistrel {
class UIBarButtonItem;
class UIModalPresentation;
class UINavigationController;
class UINavigationItem;
enum class UICommand;

/// How much of the screen a modal screen takes; numbers are the phone's. On a phone-sized screen
/// every style covers all of it, but only FullScreen may hide the status bar.
enum class UIModalPresentationStyle { FullScreen = 0, PageSheet, FormSheet, CurrentContext };

/// Posted when memory is low; every screen gets didReceiveMemoryWarning.
inline constexpr const char* UIApplicationDidReceiveMemoryWarningNotification =
    "UIApplicationDidReceiveMemoryWarningNotification";

/// One screen: its view, created on first use, and its place among the other screens. Held by
/// shared_ptr; owned by the navigation stack or by the screen that presents it.
class UIViewController : public std::enable_shared_from_this<UIViewController> {
public:
    UIViewController();
    virtual ~UIViewController();
    UIViewController(const UIViewController&) = delete;
    UIViewController& operator=(const UIViewController&) = delete;

    /// Loads the view (loadView, then viewDidLoad) when there is none.
    const std::shared_ptr<UIView>& view();
    void setView(std::shared_ptr<UIView> view);
    bool isViewLoaded() const { return view_ != nullptr; }

    /// Default: a plain view of the application area (320 x 460), resizable in width and height.
    virtual void loadView();
    virtual void viewDidLoad() {}
    virtual void viewWillAppear(bool /*animated*/) {}
    virtual void viewDidAppear(bool /*animated*/) {}
    virtual void viewWillDisappear(bool /*animated*/) {}
    virtual void viewDidDisappear(bool /*animated*/) {}
    virtual void viewDidUnload() {}
    /// Releases the view when it is not on screen (viewDidUnload follows).
    virtual void didReceiveMemoryWarning();
    virtual bool shouldAutorotateToInterfaceOrientation(UIInterfaceOrientation orientation);
    virtual void setEditing(bool editing, bool animated);
    bool isEditing() const { return editing_; }
    /// The Escape key: leaves this screen. Default: pops it from a navigation stack, dismisses it
    /// when modal, nothing for a root. Returns whether there was something to do.
    virtual bool escapePressed();
    /// A shortcut was pressed while this screen is in front. Returns whether it means something
    /// here.
    virtual bool performCommand(UICommand /*command*/) { return false; }

    const std::string& title() const { return title_; }
    /// Also the navigation item's title.
    virtual void setTitle(std::string title);
    UINavigationItem& navigationItem();
    /// Toggles editing; reads "Edit" or "Done".
    std::shared_ptr<UIBarButtonItem> editButtonItem();
    UINavigationController* navigationController() const { return navigationController_; }
    bool hidesBottomBarWhenPushed() const { return hidesBottomBarWhenPushed_; }
    void setHidesBottomBarWhenPushed(bool hides) { hidesBottomBarWhenPushed_ = hides; }

    /// Covers the whole window with `controller`, sliding up when animated. One at a time on a
    /// screen.
    void presentModalViewController(const std::shared_ptr<UIViewController>& controller,
                                    bool animated);
    /// Dismisses the modal screen of this one, or this one when it is the modal screen
    /// itself.
    void dismissModalViewControllerAnimated(bool animated);
    std::shared_ptr<UIViewController> modalViewController() const;
    UIModalPresentationStyle modalPresentationStyle() const { return modalPresentationStyle_; }
    void setModalPresentationStyle(UIModalPresentationStyle style) {
        modalPresentationStyle_ = style;
    }
    /// Who presents this screen, or the navigation controller that holds it; null for none.
    UIViewController* parentViewController() const;

    // For containers, which show screens, and for the view tree.
    void setNavigationController(UINavigationController* controller) {
        navigationController_ = controller;
    }
    /// The screen that covers itself with this one; null for none.
    UIViewController* presentingViewController() const { return presenter_; }
    void setPresentingViewController(UIViewController* presenter) { presenter_ = presenter; }
    /// This screen as one that presents others.
    UIModalPresentation& presentation();
    /// The lifecycle calls on their way to the visible screen; containers pass them on. Each does
    /// nothing when it would repeat or contradict the one before.
    virtual void sendViewWillAppear(bool animated);
    virtual void sendViewDidAppear(bool animated);
    virtual void sendViewWillDisappear(bool animated);
    virtual void sendViewDidDisappear(bool animated);
    /// The root view came into a window or left it (null) without a container's doing.
    void viewMovedToWindow(UIWindow* window);

protected:
    enum class Appearance { Disappeared, Appearing, Appeared, Disappearing };
    Appearance appearance() const { return appearance_; }
    bool isAppearingOrAppeared() const {
        return appearance_ == Appearance::Appearing || appearance_ == Appearance::Appeared;
    }

private:
    /// The outermost screen that holds this one in a navigation stack; itself when none does.
    UIViewController& outermostContainer();
    const UIViewController& outermostContainer() const;
    void releaseView();

    std::shared_ptr<UIView> view_;
    std::string title_;
    std::unique_ptr<UINavigationItem> navigationItem_;
    std::shared_ptr<UIBarButtonItem> editButtonItem_;
    UINavigationController* navigationController_ = nullptr;
    UIViewController* presenter_ = nullptr;
    std::unique_ptr<UIModalPresentation> presentation_;
    Appearance appearance_ = Appearance::Disappeared;
    UIModalPresentationStyle modalPresentationStyle_ = UIModalPresentationStyle::FullScreen;
    bool editing_ = false;
    bool hidesBottomBarWhenPushed_ = false;
};

}
