// SPDX-License-Identifier: MIT
// PRINT: output into the display line, item by item, with its waits and its scrolling.
#pragma once

#include "core/display_line.h"

namespace quillon {

struct Machine;

/// Handles the next item of a PRINT list. Called when the keyword is met, and by the tick for each further item; on
/// entry `token` is the keyword or the separator after the previous item. Leaves the list under way (KIND_PRINT), a
/// scroll (KIND_SCROLL) or the wait for EXE (STATE_PRINT_WAIT).
void print_statement(Machine& m);

/// Writes `value` at the write column. NOTHING when it has no text.
PutResult print_value(Machine& m);

} // namespace quillon
