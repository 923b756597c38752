// SPDX-License-Identifier: MIT
// Functions of one factor: SIN 30, SQR A, INT(X/2). No parentheses belong to them.
#pragma once

#include "core/token.h"

namespace quillon {

struct Machine;

/// Carries out the function whose word is the current token, by the table of these functions.
double prefix_function(Machine& m);

/// Computes the function `token`: `x` becomes its result. False, with `x` lost, where it lies outside the domain.
bool prefix_formula(const Machine& m, TokenCode token, double& x);

} // namespace quillon
