// SPDX-License-Identifier: MIT
// The window's commands: every menu entry and toolbar button is a row of a table.
#pragma once

#include "core/host.h"

#include <span>

namespace quillon {

/// A command that is shown to the user.
struct CommandText {
    int command = 0;            ///< HostCommand
    const char* text = nullptr; ///< built-in label (UTF-8), "&" before its access key
    const char* icon = nullptr; ///< name of its icon, null for none
    bool checkable = false;
};

/// An entry of a menu: a command, a submenu of commands, or a separator.
struct MenuEntry {
    enum class Kind { COMMAND, SEPARATOR, PAGES, ANGLES, ZOOMS };
    Kind kind = Kind::COMMAND;
    CommandText command; ///< of a command; of a submenu, its label
};

struct MenuText {
    const char* text = nullptr;
    std::span<const MenuEntry> entries;
};

/// A place on the toolbar: a button for a command, or a separator (command 0).
struct ToolbarEntry {
    CommandText command;
    int tooltip = 0; ///< number in section TOOLTIP
    bool drop_down = false;
};

std::span<const MenuText> menu_table();
std::span<const ToolbarEntry> toolbar_table();

/// The commands of the submenus.
std::span<const CommandText> page_commands();
std::span<const CommandText> angle_commands();
std::span<const CommandText> zoom_commands();

} // namespace quillon
