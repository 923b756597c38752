// Command mode: a typed line is run at once, or its value shown.
#pragma once

namespace quillon {

struct Machine;

/// One tick of STATE_COMMAND: edits the line, or with EXE carries it out.
void command_entry_tick(Machine& m);

/// Command mode begins: an empty line, and READY with the selected area on the display until a key or EXE.
void begin_command_mode(Machine& m);

} // namespace quillon
