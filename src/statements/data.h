// SPDX-License-Identifier: MIT
// READ and RESTORE: the constants of DATA statements, by the index that the loader built.
#pragma once

namespace quillon {

struct Machine;

void read_statement(Machine& m);
void restore_statement(Machine& m);

} // namespace quillon
