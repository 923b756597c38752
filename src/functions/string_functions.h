// SPDX-License-Identifier: MIT
// Functions that take or give text, and CSR, the column of PRINT.
#pragma once

namespace quillon {

struct Machine;

double len_function(Machine& m);
double mid_function(Machine& m);
double val_function(Machine& m);
double str_function(Machine& m);
double hex_function(Machine& m);
double dms_function(Machine& m);
double key_function(Machine& m);
double csr_function(Machine& m);

} // namespace quillon
