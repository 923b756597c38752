// SPDX-License-Identifier: MIT
// MODE and SET: the angle unit, the PRT indicator, and how numbers are shown.
#pragma once

namespace quillon {

struct Machine;

void mode_statement(Machine& m);
void set_statement(Machine& m);

} // namespace quillon
