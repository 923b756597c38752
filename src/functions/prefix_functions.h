// Functions of one factor: SIN 30, SQR A, INT(X/2). No parentheses belong to them.
#pragma once

namespace quillon {

struct Machine;

/// Carries out the function whose word is the current token, by the table of these functions.
double prefix_function(Machine& m);

/// Whether the table has a row for this token.
bool is_prefix_function(int token);

} // namespace quillon
