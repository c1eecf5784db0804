#include "shell/MainInterface.h"

#include "ads/Opener/GADSafetyPolicy.h"
#include "platform/foundation/Weakly.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIScreen.h"
#include "platform/uikit/UITableView.h"
#include "platform/uikit/UIWindow.h"
#include "shell/RootViewController.h"
#include "shell/VistrelAppDelegate.h"

namespace vistrel {

std::shared_ptr<UIApplicationDelegate> makeMainInterface() {
    GADSafetyPolicy::setShared(GADSafetyPolicy{});
    auto delegate = std::make_shared<VistrelAppDelegate>();
    delegate->setWindow(std::make_shared<UIWindow>(UIScreen::mainScreen().bounds()));
    delegate->setNavigationController(
        UINavigationController::withRootViewController(std::make_shared<RootViewController>()));
    return delegate;
}

void loadRootView(RootViewController& controller) {
    constexpr unsigned kFills = UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight;
    constexpr UIColor kSeparator = UIColor::colorWithRedGreenBlueAlpha(0.22F, 0.22F, 0.28F, 1);
    const CGSize size = UIScreen::mainScreen().applicationFrame().size;
    auto view = std::make_shared<UIView>(CGRectMake(0, 0, size.width, size.height));
    view->setAutoresizingMask(kFills);
    auto table = std::make_shared<UITableView>(view->bounds(), UITableViewStyle::Plain);
    table->setAutoresizingMask(kFills);
    table->setSeparatorColor(kSeparator);
    view->addSubview(table);
    controller.setView(view);
    controller.setTableView(table);
    table->setDelegate(weakReference<UITableViewDelegate>(&controller));
    table->setDataSource(weakReference<UITableViewDataSource>(&controller));
}

}
