#include "platform/uikit/UICommand.h"

#include <algorithm>
#include <cctype>

namespace vistrel {

namespace {

/// Letters with Shift or Caps Lock count as small ones.
bool types(const UIKey& key, std::string_view character) {
    return key.text.size() == 1 && std::tolower(static_cast<unsigned char>(key.text.front())) ==
                                       static_cast<unsigned char>(character.front());
}

}

std::optional<UICommand> commandForKey(const UIKey& key) {
    const auto found = std::ranges::find_if(kShortcuts, [&key](const UIShortcut& shortcut) {
        return key.code == shortcut.code && key.control == shortcut.control &&
               key.alt == shortcut.alt &&
               (shortcut.character.empty() || types(key, shortcut.character));
    });
    return found == kShortcuts.end() ? std::nullopt : std::optional(found->command);
}

}
