// SPDX-License-Identifier: MIT
// Jumps: GOTO, GOSUB, RETURN, ON. A jump changes where the scanner reads and leaves `token` at TOKEN_COLON, so that
// the next tick reads on there as if a statement began.
#pragma once

namespace quillon {

struct Machine;

void goto_statement(Machine& m);
void gosub_statement(Machine& m);
void return_statement(Machine& m);
void on_statement(Machine& m);

/// Evaluates what stands behind THEN and jumps there. What is no number and no "#" is left to IF: then `token` stays
/// at whatever ended the expression.
void jump_behind_then(Machine& m);

} // namespace quillon
