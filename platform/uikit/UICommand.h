#pragma once
#include "platform/uikit/UIKey.h"

#include <array>
#include <optional>
#include <string_view>

namespace vistrel {

/// What a shortcut asks for.
enum class UICommand {
    Quit,
    Close,
    Reload,
    GoToAddress,
    Back,
    Forward,
    ZoomIn,
    ZoomOut,
    ZoomReset,
    FullScreen
};

struct UIShortcut {
    UICommand command;
    UIKeyCode code;
    std::string_view character; ///< for UIKeyCode::Character
    bool control;
    bool alt;
    std::string_view keys; ///< as the manual page names them
};

/// Every shortcut. The manual page lists the same ones.
inline constexpr std::array<UIShortcut, 12> kShortcuts{{
    {UICommand::Quit, UIKeyCode::Character, "q", true, false, "Ctrl+Q"},
    {UICommand::Close, UIKeyCode::Character, "w", true, false, "Ctrl+W"},
    {UICommand::Reload, UIKeyCode::Character, "r", true, false, "Ctrl+R"},
    {UICommand::Reload, UIKeyCode::F5, "", false, false, "F5"},
    {UICommand::GoToAddress, UIKeyCode::Character, "l", true, false, "Ctrl+L"},
    {UICommand::Back, UIKeyCode::Left, "", false, true, "Alt+Left"},
    {UICommand::Forward, UIKeyCode::Right, "", false, true, "Alt+Right"},
    {UICommand::ZoomIn, UIKeyCode::Character, "+", true, false, "Ctrl+plus"},
    {UICommand::ZoomIn, UIKeyCode::Character, "=", true, false, "Ctrl+equal"},
    {UICommand::ZoomOut, UIKeyCode::Character, "-", true, false, "Ctrl+minus"},
    {UICommand::ZoomReset, UIKeyCode::Character, "0", true, false, "Ctrl+0"},
    {UICommand::FullScreen, UIKeyCode::F11, "", false, false, "F11"},
}};

/// Nothing when the key is no shortcut.
std::optional<UICommand> commandForKey(const UIKey& key);

}
