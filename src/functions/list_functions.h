// SPDX-License-Identifier: MIT
// Functions with an argument list: RND(x,n), NPR(n,r), NCR(n,r), REC(r,a), POL(x,y), DEG(d,m,s); and RAN#, which has
// no argument.
#pragma once

#include <cstdint>

namespace quillon {

struct Machine;

double rnd_function(Machine& m);
double npr_function(Machine& m);
double ncr_function(Machine& m);
double rec_function(Machine& m);
double pol_function(Machine& m);
double deg_function(Machine& m);
double ran_function(Machine& m);

/// Advances the random generator and returns its output, 0-32767.
int next_random(std::uint32_t& seed);

} // namespace quillon
