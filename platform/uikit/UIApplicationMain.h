#pragma once
#include <functional>
#include <memory>

namespace vistrel {
class UIApplicationDelegate;

/// What the main interface file creates: called once the host stands, before the application has
/// launched.
using UIMainInterface = std::function<std::shared_ptr<UIApplicationDelegate>()>;

/// Sets the host up from the command line, creates the application and its delegate, and runs the
/// loop. Returns the exit status. Provided by the host's folder.
int UIApplicationMain(int argc, char* argv[], const UIMainInterface& mainInterface);

}
