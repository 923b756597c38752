// The DATA index: every DATA item of the listing, found once when it is loaded.
#pragma once

#include "core/text.h"

namespace quillon {

struct Machine;

/// Empties the index and takes the READ position back.
void clear_data_index(Machine& m);

/// Builds the index from the loaded lines: for each used area its entry, then for each DATA statement one for its line
/// and one for each item. False, with `system_message`, when the index is full or an item is not followed by a ",".
/// Runs no subscript and touches no variable.
bool build_data_index(Machine& m);

/// The text of a DATA item: what is longer is cut.
using DataText = BoundedText<63>;

/// Reads the DATA item at `p` and moves behind it; false at the end of the statement, whose ":" is passed. `whole`
/// tells whether the item had room.
bool read_data_item(const char*& p, DataText& item, bool& whole);

/// Passes the "," behind an item; false, and nothing passed, where something else stands than that or the end of the
/// statement.
bool pass_data_separator(const char*& p);

/// Whether the index begins an area at `index`, ends there, or has no such entry: where READ must stop.
bool ends_area_data(const Machine& m, int index);

/// The index of the current area's own entry, -1 when it has none.
int find_area_data(const Machine& m);

} // namespace quillon
