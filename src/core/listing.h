// Listings: loading a text into the program areas, and moving about in them. Files are the shell's business.
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

/// A listing of more bytes than this is refused.
constexpr std::size_t LISTING_SIZE_MAX = std::size_t{1} << 20;

/// Makes a text of up to LISTING_SIZE_MAX bytes the machine's program: areas, lines and the DATA index. On success the
/// machine waits for the selection of an area; variables stay. On a fault nothing of the text remains, nor of the
/// listing before it, and the machine waits for a selection with a blank line. `system_message` tells what is wrong.
/// Seeds the random generator.
LoadResult load_listing_text(Machine& m, std::string text);

/// Takes the listing out of the machine: no areas, no DATA, selection state.
void unload_listing(Machine& m);

/// Makes area `n` (0-9) current at its first line and returns the text of that; null when the area has no lines
/// (the machine's error for an area that the listing does not define, or no error for an empty one).
const char* select_area(Machine& m, int n);

/// Whether area `n` (0-9) holds no program.
bool area_is_empty(const Machine& m, int n);

/// How the selection of an area shows area `n` (0-9): its digit, or a mark when the listing uses it.
char area_mark(const Machine& m, int n);

/// Sets the READ position to the first DATA of the current area. An area that the index does not know is told in
/// `system_message` and reads from the start.
void restore_area_data(Machine& m);

/// Goes on to the next line of the area, or marks the end of the program.
void advance_line(Machine& m);

/// The index of the line with this number in the current area, -1 when there is none.
int find_line(Machine& m, int number);

} // namespace quillon
