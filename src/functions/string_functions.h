// SPDX-License-Identifier: MIT
// What the functions that take or give text compute, and CSR, the column of PRINT. Their arguments have been read by
// their rows in functions/function_table.h; each leaves its result as the current operand and returns its number.
#pragma once

#include "core/arguments.h"

namespace quillon {

double len_result(Machine& m, const Arguments& arguments);
double mid_result(Machine& m, const Arguments& arguments);
double val_result(Machine& m, const Arguments& arguments);
double str_result(Machine& m, const Arguments& arguments);
double hex_result(Machine& m, const Arguments& arguments);
double dms_result(Machine& m, const Arguments& arguments);
double key_result(Machine& m, const Arguments& arguments);
double csr_result(Machine& m, const Arguments& arguments);

/// Whether VAL reads this text: an optional sign, digits, and at most one point. Nothing at all is 0.
bool is_plain_decimal(std::string_view text);

} // namespace quillon
