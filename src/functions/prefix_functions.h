// Functions of one factor: SIN 30, SQR A, INT(X/2). No parentheses belong to them.
#pragma once

namespace quillon {

struct Machine;

/// Carries out the function whose word is the current token, by the table of these functions.
double prefix_function(Machine& m);

/// Computes the function `token`: `x` becomes its result. False, with `x` lost, where it lies outside the domain.
bool prefix_formula(const Machine& m, int token, double& x);

} // namespace quillon
