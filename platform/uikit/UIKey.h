#pragma once
#include <string>

namespace vistrel {

enum class UIKeyCode {
    Up,
    Down,
    Left,
    Right,
    Enter,
    Escape,
    Space,
    Tab,
    Backspace,
    Delete,
    Home,
    End,
    PageUp,
    PageDown,
    Menu, ///< asks for the menu of what has the focus
    F5,
    F11,
    Character
};

struct UIKey {
    UIKeyCode code = UIKeyCode::Character;
    std::string text; ///< what it types, UTF-8
    bool shift = false;
    bool control = false;
    bool alt = false;
};

}
