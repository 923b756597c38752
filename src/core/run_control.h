// SPDX-License-Identifier: MIT
// Running, waiting, stopping: the one place that changes the run state. Statements say what they want by these verbs,
// the tick serves what they have set up. What a host starts and stops by is in core/controls.h.
//
// `prev_state` remembers the state before the last change, and the end of a program looks at it; a few changes leave it
// as it was, which is said with each of them.
#pragma once

#include "core/machine.h"

namespace quillon {

// What a statement asks for.

/// The output stays until EXE. A list goes on after it: the change counts for `prev_state`.
void wait_for_exe(Machine& m);

/// The same at the end of a statement; `prev_state` stays.
void wait_for_exe_at_end(Machine& m);

/// A text that did not fit scrolls in, its first step after so many ticks; then the machine enters a state and a
/// context.
void start_scroll(Machine& m, int ticks, RunState state_after, StmtKind kind_after);

/// A PRINT that ended with ";" is over; no wait follows.
void end_print_without_wait(Machine& m);

/// The prompt is shown: waits for the first key of an entry for the current operand, which is a variable.
void ask(Machine& m);

/// The list of an INPUT is through.
void end_input(Machine& m);

/// STOP, END and COMMAND.
void stop_at_statement(Machine& m);
void end_at_statement(Machine& m);
void leave_for_command_mode(Machine& m);

/// A jump has been made: the next statement begins where it led to.
void finish_jump(Machine& m);

/// A jump led into another area. `prev_state` stays for a call.
void enter_area(Machine& m, bool by_call);

/// A jump led to an area without a program.
void end_at_empty_area(Machine& m);

/// RUN: the area chosen for it, after a reset, or the line at `stmt_start` of the current area. An area without a
/// program leads to command mode.
void run_area(Machine& m);
void run_from_line(Machine& m);

/// Nothing is waited for now, or so many ticks.
void set_wait(Machine& m, int ticks);

/// Remembers where a statement of a list is, for the end of its wait.
void save_position(Machine& m);

// What errors ask for.

/// An error ends the program, or the command line; a refused entry is shown until a key.
void enter_error_state(Machine& m, ErrorCode code);

// What the tick serves.

/// One step of the text that scrolls in; true while more is to come. At the end the list has its position again.
bool scroll_step(Machine& m);

/// EXE ends a wait for it.
void end_wait_for_exe(Machine& m);

/// EXE goes on with what was stopped.
void resume(Machine& m);

/// The first key begins an entry.
void begin_entry(Machine& m);

/// Shows the prompt of a refused or stopped entry again.
void prompt_again(Machine& m);

/// Whatever the evaluation of an entry found, the entry is what is wrong.
void refuse_entry(Machine& m);

/// An empty entry: shows the prompt, with nothing else of the line.
void return_to_prompt(Machine& m);

/// The entry has been taken: on with the list, or back to the command line.
void finish_entry(Machine& m);

/// The last line has been passed: straight to command mode when the last thing was a wait for EXE.
void end_program(Machine& m);

/// The clear key where a program is stopped, which keeps its place, and where none is.
void open_command_line_while_stopped(Machine& m);
void open_command_line(Machine& m);

/// The clear key where the error of a command line is shown.
void clear_command_error(Machine& m);

/// EXE where a result or READY is shown, and a key there, which begins the next line.
void end_result(Machine& m);
void begin_line_after_result(Machine& m);

// What a command line asks for.

/// While a command line runs it is in command mode, whatever a PRINT on it has set.
void keep_command_mode(Machine& m);

/// A long text of a command line does not scroll: its list has its context again at once.
void skip_scroll(Machine& m);

/// What a line leaves: its value, what it has printed, or the prompt of its INPUT, after which the rest is dropped.
void show_result_until_key(Machine& m);
void show_output_until_exe(Machine& m);
void drop_rest_of_line(Machine& m);

/// EXE on an empty line: on with a stopped program, if any.
void leave_empty_line(Machine& m);

} // namespace quillon
