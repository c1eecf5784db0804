#pragma once
#include "platform/uikit/UIKey.h"

namespace vistrel {

/// Which of `count` buttons the key moves to from `current` (-1 for none): Tab and the arrows,
/// around the ends. `current` for other keys.
constexpr int buttonAfterKey(const UIKey& key, int current, int count) {
    const bool isTab = key.code == UIKeyCode::Tab;
    if (key.code == UIKeyCode::Right || key.code == UIKeyCode::Down || (isTab && !key.shift))
        return (current + 1) % count;
    if (key.code == UIKeyCode::Left || key.code == UIKeyCode::Up || isTab)
        return current <= 0 ? count - 1 : current - 1;
    return current;
}

}
