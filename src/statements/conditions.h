// SPDX-License-Identifier: MIT
// Conditions: IF with THEN, or with ";".
#pragma once

namespace quillon {

struct Machine;

void if_statement(Machine& m);

} // namespace quillon
