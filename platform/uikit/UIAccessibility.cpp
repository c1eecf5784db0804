#include "platform/uikit/UIAccessibility.h"

#include "platform/host/Display.h"
#include "platform/host/Host.h"

namespace vistrel {

void UIAccessibilityAnnounce(const std::string& text) {
    host::current().display->announce(text);
}

}
