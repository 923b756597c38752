// SPDX-License-Identifier: MIT
// The layout of menus and toolbar: which command comes where. What a command is called and does is said by its row
// (shell/commands.h).
#pragma once

#include "core/host_commands.h"
#include "shell/window_texts.h"

#include <span>

namespace quillon {

/// A number that no command has.
constexpr int SEPARATOR = 0;

/// An entry of a menu: a command, a separator, or a submenu of commands.
struct MenuEntry {
    int command = SEPARATOR;
    WindowText submenu{};                    ///< what the submenu is called
    std::span<const HostCommand> commands{}; ///< of the submenu, else empty
};

struct MenuLayout {
    WindowText text;
    std::span<const MenuEntry> entries;
};

/// A place on the toolbar: a button, or a separator.
struct ToolbarEntry {
    int command = SEPARATOR;
    bool drop_down = false; ///< the button has a menu of its own
};

std::span<const MenuLayout> menu_table();
std::span<const ToolbarEntry> toolbar_table();

/// The commands that choose a program area.
std::span<const HostCommand> page_commands();

} // namespace quillon
