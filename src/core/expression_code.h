// SPDX-License-Identifier: MIT
// Expression code: expressions of the listing that deal with numbers only, as operations on a stack. It only knows what
// happens when nothing goes wrong, and bails out wherever an error or a string shows.
#pragma once

#include "core/fast_code.h"
#include "core/program_token.h"

namespace quillon {

struct Machine;

/// The code of the expression that begins at a token of the listing; null when there is none.
const Expression* find_expression(const Machine& m, TokenIndex first);

/// Evaluates an expression by its code, with all that `eval_sum` leaves in the record. False if the code bails out; the
/// record is unchanged. No error may be pending.
bool run_expression(Machine& m, const Expression& expression, double& result);

} // namespace quillon
