// SPDX-License-Identifier: MIT
// The fast paths: the one door through which evaluator and executor reach what the listing's code can do at once. Each
// does what the plain way would have done, or bails out with nothing changed, wherever an error, a limit or a rare case
// shows; the plain way then does and reports it. So the record is the same after every tick with them or without.
#pragma once

namespace quillon {

struct Machine;

/// Evaluates the expression at the next token: a statement word, a single operand, the end of a statement, or an
/// expression that has code. False if the fast path bails out; the record is unchanged.
bool try_evaluate(Machine& m, double& result);

/// Executes the statement at the next token: the assignment of a number to a plain variable, or the end of a line.
/// False if the fast path bails out; the record is unchanged.
bool try_execute(Machine& m, double& result);

} // namespace quillon
