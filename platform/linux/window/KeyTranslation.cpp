#include "platform/linux/window/KeyTranslation.h"

#include <array>
#include <utility>

namespace vistrel {

namespace {

constexpr std::array<std::pair<guint, UIKeyCode>, 29> kKeys{{
    {GDK_KEY_Up, UIKeyCode::Up},
    {GDK_KEY_KP_Up, UIKeyCode::Up},
    {GDK_KEY_Down, UIKeyCode::Down},
    {GDK_KEY_KP_Down, UIKeyCode::Down},
    {GDK_KEY_Left, UIKeyCode::Left},
    {GDK_KEY_KP_Left, UIKeyCode::Left},
    {GDK_KEY_Right, UIKeyCode::Right},
    {GDK_KEY_KP_Right, UIKeyCode::Right},
    {GDK_KEY_Return, UIKeyCode::Enter},
    {GDK_KEY_KP_Enter, UIKeyCode::Enter},
    {GDK_KEY_ISO_Enter, UIKeyCode::Enter},
    {GDK_KEY_Escape, UIKeyCode::Escape},
    {GDK_KEY_Back, UIKeyCode::Escape},
    {GDK_KEY_space, UIKeyCode::Space},
    {GDK_KEY_KP_Space, UIKeyCode::Space},
    {GDK_KEY_Tab, UIKeyCode::Tab},
    {GDK_KEY_ISO_Left_Tab, UIKeyCode::Tab},
    {GDK_KEY_BackSpace, UIKeyCode::Backspace},
    {GDK_KEY_Delete, UIKeyCode::Delete},
    {GDK_KEY_KP_Delete, UIKeyCode::Delete},
    {GDK_KEY_Home, UIKeyCode::Home},
    {GDK_KEY_End, UIKeyCode::End},
    {GDK_KEY_Page_Up, UIKeyCode::PageUp},
    {GDK_KEY_KP_Page_Up, UIKeyCode::PageUp},
    {GDK_KEY_Page_Down, UIKeyCode::PageDown},
    {GDK_KEY_KP_Page_Down, UIKeyCode::PageDown},
    {GDK_KEY_Menu, UIKeyCode::Menu},
    {GDK_KEY_F5, UIKeyCode::F5},
    {GDK_KEY_F11, UIKeyCode::F11},
}};

}

UIKey keyFromGdk(guint value, GdkModifierType state) {
    UIKey key;
    for (const auto& [gdk, code] : kKeys)
        if (gdk == value)
            key.code = code;
    const gunichar character = gdk_keyval_to_unicode(value);
    if (character >= 0x20 && character != 0x7f) {
        char text[6];
        key.text.assign(text, static_cast<std::size_t>(g_unichar_to_utf8(character, text)));
    }
    key.shift = (state & GDK_SHIFT_MASK) != 0;
    key.control = (state & GDK_CONTROL_MASK) != 0;
    key.alt = (state & GDK_ALT_MASK) != 0;
    if (value == GDK_KEY_F10 && key.shift)
        key.code = UIKeyCode::Menu;
    return key;
}

}
