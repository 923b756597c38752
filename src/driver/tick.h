// The clock of the machine: everything happens in ticks.
#pragma once

namespace quillon {

struct Machine;

/// One tick: the tone, the blinking cursor, a held error, and then one step of whatever the machine is doing, at most
/// one statement of a program. The host calls it at the pace of the timer, with the modifier keys sampled before.
void machine_tick(Machine& m);

/// A wait has ended with EXE: `token` and the statement context are those from before it; an INPUT that was under way
/// asks again.
void resume_statement(Machine& m);

/// Goes to command mode with an empty line, as the clear key does.
void enter_command_mode(Machine& m);

} // namespace quillon
