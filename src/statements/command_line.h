// SPDX-License-Identifier: MIT
// Command mode: a typed line is run at once, or its value shown.
#pragma once

namespace quillon {

struct Machine;

/// One tick of STATE_COMMAND: edits the line, or with EXE carries it out.
void command_entry_tick(Machine& m);

} // namespace quillon
