// The host's commands, by number: what the menu, the toolbar, keys and the machine itself ask for.
#pragma once

namespace quillon {

struct Machine;

/// RUN: goes on after a stop, or starts the selected area from its beginning. An empty area leads to command mode.
/// Without a listing it says so in a message box.
void host_run(Machine& m);

/// STOP: halts a running program; a halted one shows its position. Nothing without a listing, or where nothing runs.
void host_stop(Machine& m);

/// Selects the program area (0-9) that RUN starts.
void select_page(Machine& m, int page);

} // namespace quillon
