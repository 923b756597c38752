// SPDX-License-Identifier: MIT
// What the functions with an argument list compute when they give numbers: RND(x,n), NPR(n,r), NCR(n,r), REC(r,a),
// POL(x,y), DEG(d,m,s); and RAN#, which has no argument. Their arguments have been read by their rows in
// functions/function_table.h; each leaves its result as the current operand and returns the number.
#pragma once

#include "core/arguments.h"

#include <cstdint>

namespace quillon {

double rnd_result(Machine& m, const Arguments& arguments);
double npr_result(Machine& m, const Arguments& arguments);
double ncr_result(Machine& m, const Arguments& arguments);
double rec_result(Machine& m, const Arguments& arguments);
double pol_result(Machine& m, const Arguments& arguments);
double deg_result(Machine& m, const Arguments& arguments);
double ran_result(Machine& m, const Arguments& arguments);

/// Whether NPR and NCR take these two whole numbers.
constexpr bool are_counts(double n, double r) { return r >= 0 && n >= r; }

/// Advances the random generator and returns its output, 0-32767.
int next_random(std::uint32_t& seed);

} // namespace quillon
