#pragma once
#include "platform/uikit/UIViewController.h"

#include <vector>

namespace vistrel {
class UINavigationBar;

/// A stack of screens under one navigation bar. Pushes and pops slide; the calls viewWillAppear:,
/// viewDidAppear:, viewWillDisappear: and viewDidDisappear: come in the phone's order. A push or
/// pop that comes while another slides ends that one first.
class UINavigationController : public UIViewController {
public:
    static std::shared_ptr<UINavigationController>
    withRootViewController(std::shared_ptr<UIViewController> root);
    ~UINavigationController() override;

    void pushViewController(std::shared_ptr<UIViewController> controller, bool animated);
    /// Null when only the root is left.
    std::shared_ptr<UIViewController> popViewControllerAnimated(bool animated);
    void popToRootViewControllerAnimated(bool animated);
    const std::vector<std::shared_ptr<UIViewController>>& viewControllers() const { return stack_; }
    std::shared_ptr<UIViewController> topViewController() const;
    std::shared_ptr<UIViewController> visibleViewController() const;

    const std::shared_ptr<UINavigationBar>& navigationBar();
    bool isNavigationBarHidden() const { return barHidden_; }
    void setNavigationBarHidden(bool hidden, bool animated);

    void loadView() override;
    void viewDidLoad() override;
    void didReceiveMemoryWarning() override;
    bool escapePressed() override;

protected:
    void sendViewWillAppear(bool animated) override;
    void sendViewDidAppear(bool animated) override;
    void sendViewWillDisappear(bool animated) override;
    void sendViewDidDisappear(bool animated) override;

private:
    UINavigationController();
    enum class Way { Push, Pop };
    struct Transition;

    void adopt(UIViewController& controller);
    std::vector<std::shared_ptr<UINavigationItem>> barItems() const;
    void popTo(std::size_t count, bool animated);
    /// Shows the top screen instead of `old`; `leaving` are no longer in the stack.
    void begin(Way way, const std::shared_ptr<UIViewController>& old,
               std::vector<std::shared_ptr<UIViewController>> leaving, bool animated);
    void slide(Way way);
    void setTakesTouches(bool takes);
    void finish();
    /// The top screen's view alone in its place.
    void installTopView();
    void layoutBars();

    std::vector<std::shared_ptr<UIViewController>> stack_;
    std::shared_ptr<UINavigationBar> bar_;
    std::shared_ptr<UIView> content_;
    std::unique_ptr<Transition> transition_;
    unsigned serial_ = 0; ///< of the running transition; an older one's end means nothing
    bool barHidden_ = false;
};

}
