// Program commands and the words around them: STOP, END, COMMAND, REM, LET, and words without an effect.
#pragma once

namespace quillon {

struct Machine;

void stop_statement(Machine& m);
void end_statement(Machine& m);
void command_statement(Machine& m);
void rem_statement(Machine& m);

/// Leaves the target variable as the operand, so that the assignment goes on as without LET.
void let_statement(Machine& m);

/// Reads and drops the rest of the statement: words that the machine accepts without an effect, and DATA.
void skip_statement(Machine& m);

/// Leaves the word as the current token, which the statement's end then reports as unknown.
void unsupported_statement(Machine& m);

} // namespace quillon
