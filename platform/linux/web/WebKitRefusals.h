#pragma once
#include "platform/linux/NativeCallback.h"

#include <webkit/webkit.h>

#include <vector>

namespace vistrel {

/// The answers that are the same for every page: no dialogs of the engine's, no permissions, no
/// full screen.
std::vector<SignalConnection> refuseExtras(WebKitWebView* view);

}
