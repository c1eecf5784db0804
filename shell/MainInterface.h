#pragma once
#include <memory>

namespace vistrel {
class RootViewController;
class UIApplicationDelegate;

/// The application's main interface: the window, the navigation stack with the
/// main menu as its root, and the delegate that holds both.
std::shared_ptr<UIApplicationDelegate> makeMainInterface();
/// The main menu's view with its table, connected to the controller.
void loadRootView(RootViewController& controller);

}
