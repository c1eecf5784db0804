#pragma once
#include "platform/uikit/UIScreenTransition.h"
#include "platform/uikit/UIViewController.h"

#include <vector>

namespace vistrel {
class UINavigationBar;

/// A stack of screens under one navigation bar. Pushes and pops slide; the calls viewWillAppear:,
/// viewDidAppear:, viewWillDisappear: and viewDidDisappear: come in the phone's order. A push or
/// pop during another one's slide finishes that one first.
class UINavigationController : public UIViewController {
public:
    static std::shared_ptr<UINavigationController>
    withRootViewController(std::shared_ptr<UIViewController> root);
    ~UINavigationController() override;

    void pushViewController(std::shared_ptr<UIViewController> controller, bool animated);
    /// Null when only the root is left.
    std::shared_ptr<UIViewController> popViewControllerAnimated(bool animated);
    /// Pops everything above a screen of the stack. Nothing for others.
    void popToViewControllerAnimated(const UIViewController& controller, bool animated);
    void popToRootViewControllerAnimated(bool animated);
    const std::vector<std::shared_ptr<UIViewController>>& viewControllers() const { return stack_; }
    std::shared_ptr<UIViewController> topViewController() const;

    const std::shared_ptr<UINavigationBar>& navigationBar();

    void loadView() override;
    void viewDidLoad() override;
    void didReceiveMemoryWarning() override;
    bool escapePressed() override;
    void sendViewWillAppear(bool animated) override;
    void sendViewDidAppear(bool animated) override;
    void sendViewWillDisappear(bool animated) override;
    void sendViewDidDisappear(bool animated) override;

private:
    UINavigationController();
    enum class Way { Push, Pop };

    std::vector<std::shared_ptr<UINavigationItem>> barItems() const;
    void popTo(std::size_t count, bool animated);
    /// Shows the top screen instead of `old`.
    void showTopScreen(Way way, const std::shared_ptr<UIViewController>& old, bool animated);
    void announceChange(const std::shared_ptr<UIViewController>& old, UIViewController& shown,
                        bool animated);
    /// `travel`: 1 comes in from the right, -1 from the left.
    void startSlide(UIViewController& shown, double travel);
    void completeChange(const std::shared_ptr<UIViewController>& old, UIViewController& shown,
                        bool animated);
    /// The top screen's view alone in its place.
    void installTopView();
    void layoutBars();

    std::vector<std::shared_ptr<UIViewController>> stack_;
    std::shared_ptr<UINavigationBar> bar_;
    std::shared_ptr<UIView> content_;
    UIScreenTransition transition_;
};

}
