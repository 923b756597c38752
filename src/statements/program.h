// SPDX-License-Identifier: MIT
// Program commands and the words around them: RUN, STOP, END, COMMAND, VAC, REM, LET, and words without an effect.
#pragma once

namespace quillon {

struct Machine;

/// RUN starts the selected area after a reset, RUN n line n of the current area without one. An empty area leaves the
/// machine in command mode. On a command line the program begins when the line has ended.
void run_statement(Machine& m);

void stop_statement(Machine& m);
void end_statement(Machine& m);
void command_statement(Machine& m);
void vac_statement(Machine& m);
void rem_statement(Machine& m);

/// Leaves the target variable as the operand, so that the assignment goes on as without LET.
void let_statement(Machine& m);

/// Reads and drops the rest of the statement: words that the machine accepts without an effect, and DATA.
void skip_statement(Machine& m);

/// Leaves the word as the current token, which the statement's end then reports as unknown.
void unsupported_statement(Machine& m);

} // namespace quillon
