// Numeric functions that take one factor: INT, ABS, SGN.
#pragma once

namespace quillon {

struct Machine;

double int_function(Machine& m);
double abs_function(Machine& m);
double sgn_function(Machine& m);

} // namespace quillon
