// SPDX-License-Identifier: MIT
// The interpreter: tokens of the running program, expressions, statements. These call each other (a subscript is an
// expression, an expression may begin with a statement word), so they share one header.
//
// Every level returns its number (0 for a string and after an error), leaves the operand's record in `value`, and
// leaves `token` at the first token that it did not take. After an error `error_code` is set and every level returns
// at once; callers test it after each call.
#pragma once

#include "core/arithmetic.h"
#include "core/machine.h"

namespace quillon {

/// How deep expressions may be nested: a factor inside a factor (parentheses, signs, functions) counts one, a subscript
/// and a statement word two, for themselves and their factor. One more is an unknown token. Small enough for a stack
/// of 64 KiB.
constexpr int NESTING_DEPTH_MAX = 72;

/// Reads the next token: sets `token`, `token_start`, and for a literal or a variable `value`. A subscript is
/// evaluated. A fault composes its detail and gives TOKEN_LEXICAL_ERROR or TOKEN_SUBSCRIPT_ERROR without raising
/// anything, except what the subscript's own evaluation raises.
TokenCode next_token(Machine& m);

/// Reads the token after an operand: as `next_token`, but `value` stays the operand's record.
void next_token_after_operand(Machine& m);

/// The code of the next token, which is not read.
inline TokenCode peek_token(const Machine& m) { return token_at(m, m.eval.next).code; }

/// Makes the next token the current one as it is: for one that is neither an operand nor a fault.
inline void consume(Machine& m, const ProgramToken& token) {
    m.eval.prev_token = m.eval.token;
    m.eval.token = token.code;
    m.eval.token_start = token.begin;
    m.eval.next += token.code == TOKEN_END ? 0 : 1;
}

/// Makes the next token, a literal or a variable without a subscript, the current operand.
void consume_operand(Machine& m, const ProgramToken& token);

/// Skips the rest of a statement, its end included.
void skip_statement_rest(Machine& m);

/// A whole expression without relations, and a single factor of one.
double eval_sum(Machine& m);
double eval_factor(Machine& m);

/// Continues after a left operand as long as operators of this level, or tighter ones, follow.
double eval_operators(Machine& m, Level level, double left);

/// The number of the literal or variable just read; 0 of a string.
inline double operand_number(const Machine& m) {
    const Value& value = m.eval.value;
    return value.kind == VALUE_NUMBER || value.kind == VALUE_NUMVAR ? value.number : 0;
}

/// Range-checks the number of a factor: returns it, or raises ERR3 and returns 0.
double checked_number(Machine& m, double number);

/// Runs the statement of the current word. Only LET leaves an operand: its target.
void run_statement_word(Machine& m, const Statement& statement);

/// Makes the target of an assignment the current operand, as a computed one.
void set_assignment_result(Machine& m, ValueKind kind, CellIndex cell);

/// Enters and leaves a nested level. `descend` raises an error and gives false where nesting is too deep.
bool descend(Machine& m);
void ascend(Machine& m);

/// Evaluates a whole expression as an argument: `value.kind` is VALUE_NONE afterwards when it is missing.
double eval_argument(Machine& m);

/// Executes one statement, or evaluates one expression with at most one relation (1 or 0).
double eval_statement(Machine& m);

} // namespace quillon
