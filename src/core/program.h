// SPDX-License-Identifier: MIT
// The machine's program: moving about in its areas and lines. Loads are in core/controls.h.
#pragma once

#include "core/machine.h"

namespace quillon {

/// Makes area `n` (0-9) current at its first line and returns the place of that; NOWHERE when the area has no lines
/// (with the machine's error for an area that the listing does not define, and no error for an empty one).
TokenIndex select_area(Machine& m, int n);

/// Whether area `n` (0-9) holds no program.
bool area_is_empty(const Machine& m, int n);

/// How the selection of an area shows area `n` (0-9): its digit, or a mark when the listing uses it.
char area_mark(const Machine& m, int n);

/// Sets the READ position to the first DATA of the current area. An area that the index does not know is reported in
/// `system_message` and reads from the start.
void restore_area_data(Machine& m);

/// Goes on to the next line of the area, or marks the end of the program.
void advance_line(Machine& m);

/// The place of the first token of a line of the current area, by the line's index.
TokenIndex line_start(const Machine& m, int line);

} // namespace quillon
