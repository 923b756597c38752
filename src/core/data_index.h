// The DATA index: every DATA item of the listing, found once when it is loaded.
#pragma once

namespace quillon {

struct Machine;

/// Empties the index and takes the READ position back.
void clear_data_index(Machine& m);

/// Builds the index from the loaded lines: for each used area its entry, then for each DATA statement one for its line
/// and one for each item. False, with `system_message`, when the index is full or an item is not followed by a ",".
/// Runs no subscript and touches no variable.
bool build_data_index(Machine& m);

/// Whether the index begins an area at `index`, ends there, or has no such entry: where READ must stop.
bool ends_area_data(const Machine& m, int index);

/// The index of the current area's own entry, -1 when it has none.
int find_area_data(const Machine& m);

} // namespace quillon
