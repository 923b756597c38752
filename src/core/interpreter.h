// The interpreter: tokens of the running program, expressions, statements. These call each other (a subscript is an
// expression, an expression may begin with a statement word), so they stand behind one header.
//
// Every level returns its number (0 for a string and after an error), leaves the operand's record in `value`, and
// leaves `token` at the first token that it did not take. After an error `error_code` is set and every level returns
// at once; callers test it after each call.
#pragma once

#include "core/machine.h"

namespace quillon {

/// How deep expressions may be nested: a factor inside a factor (parentheses, signs, functions) counts one, a subscript
/// and a statement word two, for themselves and their factor. One more is an unknown token. Small enough for a stack
/// of 64 KiB.
constexpr int NESTING_DEPTH_MAX = 72;

/// Reads the token at `scan_ptr` and moves behind it: sets `token`, `prev_token`, `token_start`, and for a literal or
/// a variable `value`. A subscript is evaluated. A fault composes its detail and gives TOKEN_LEXICAL_ERROR or
/// TOKEN_SUBSCRIPT_ERROR without raising anything, except what the subscript's own evaluation raises.
int next_token(Machine& m);

/// Makes a token that is no operand and no fault the current one, as `next_token` does when it reads it.
inline void take_token(Machine& m, const Token& token) {
    m.prev_token = m.token;
    m.token_start = token.begin;
    m.scan_ptr = token.end;
    m.token = token.code;
}

/// The same for a literal, or a variable without a subscript: sets `value` too.
void take_operand(Machine& m, const Token& token);

/// The same for the end of a statement where an operand could stand: the statement's context ends with it.
inline void take_statement_end(Machine& m, const Token& token) {
    take_token(m, token);
    m.stmt_kind = KIND_NONE;
}

/// Reads the token behind an operand: as `next_token`, but `value` stays the operand's record.
void next_token_behind_operand(Machine& m);

/// The code of the token at `scan_ptr`, which is not read.
int peek_token(const Machine& m);

/// A whole expression without relations, and a single factor of one.
double eval_sum(Machine& m);
double eval_factor(Machine& m);

/// Enters and leaves a nested level. `descend` raises an error and gives false where nesting is too deep.
bool descend(Machine& m);
void ascend(Machine& m);

/// Evaluates a whole expression as an argument: `value.kind` is VALUE_NONE afterwards when there was none.
double eval_argument(Machine& m);

/// Executes one statement, or evaluates one expression with at most one relation (1 or 0).
double eval_statement(Machine& m);

} // namespace quillon
