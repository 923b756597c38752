// SPDX-License-Identifier: MIT
// The machine's program: taking a listing in and out, and moving about in its lines.
#pragma once

#include "core/machine.h"

#include <string>

namespace quillon {

/// What became of a load.
enum class LoadResult {
    LOADED,
    UNREADABLE, ///< the file could not be read: nothing has changed
    FAULTY,     ///< the text has a fault: no listing is loaded now
};

/// Makes a text the machine's program. On success the machine waits for the selection of an area; variables stay. On a
/// fault no listing is loaded any more, and the machine waits for a selection with a blank line; `system_message` says
/// what is wrong. Seeds the random generator with the host's milliseconds.
LoadResult load_listing_text(Machine& m, std::string text);

/// Takes the listing out of the machine: no areas, no DATA, selection state.
void unload_listing(Machine& m);

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
