// SPDX-License-Identifier: MIT
// Functions with an argument list, or with none, and CSR: one handler for all of them.
#pragma once

#include "core/token.h"

namespace quillon {

struct Machine;

/// Carries out the function whose word is the current token, by its row in functions/function_table.h.
double list_function(Machine& m);

} // namespace quillon
