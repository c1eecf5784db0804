#pragma once
#include "platform/linux/web/WebKitPage.h"

namespace vistrel {

/// The engine's signals, handed to a page's members; and the answers that are the same for every
/// page: no dialogs, no permissions, no full screen, no windows.
struct WebKitPage::Handlers {
    static void connect(WebKitPage& page);
};

}
