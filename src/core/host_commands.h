// SPDX-License-Identifier: MIT
// The numbers of the host's commands: what menus, toolbar, keys, scripts and the machine itself ask for. What each
// does, shows and is called is a row of host_commands.def.
#pragma once

namespace quillon {

/// A command, by the number of its menu entry.
enum HostCommand : int {
// NOLINTNEXTLINE(cppcoreguidelines-macro-usage): the rows are the includer's to take apart
#define HOST_COMMAND(name, number, ...) COMMAND_##name = number,
#include "core/host_commands.def"
#undef HOST_COMMAND
};

// The numbers that commands and the toolbar's buttons have. Not all of them are in use.
constexpr int HOST_COMMAND_FIRST = 40001;
constexpr int HOST_COMMAND_LAST = 40049;
constexpr int HOST_COMMAND_COUNT = HOST_COMMAND_LAST - HOST_COMMAND_FIRST + 1;

} // namespace quillon
