// SPDX-License-Identifier: MIT
// Loops: FOR and NEXT.
#pragma once

namespace quillon {

struct Machine;

void for_statement(Machine& m);
void next_statement(Machine& m);

} // namespace quillon
