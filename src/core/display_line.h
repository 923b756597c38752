// SPDX-License-Identifier: MIT
// The display line: 511 characters, of which the LCD shows twelve, and the one operation that writes into it.
#pragma once

#include <string_view>

namespace quillon {

struct Machine;

/// What `put_display_text` reports.
enum class PutResult {
    NOTHING = 0, ///< there was nothing to write (`print_value` only)
    WHOLE = 1,   ///< the whole text was written
    PENDING = 10 ///< the display is full, the rest is to scroll in
};

/// Fills the display line with blanks; the write column stays.
void clear_display(Machine& m);

/// Clears the display line and takes the write column back to its start.
void clear_display_line(Machine& m);

/// Puts a text on a cleared display line at once, whatever PRINT is doing; the write column is after it.
void show_text(Machine& m, std::string_view text);

/// Writes `text` from `column` (a negative one counts as 0) on and moves the write column on by each character.
/// Nothing is written beyond column 126. In a PRINT list the text stops at the twelfth character, in a scroll after
/// one character; the rest then waits in `pending_print_text`. `text` may lie in there.
PutResult put_display_text(Machine& m, int column, std::string_view text);

/// The column that the LCD shows first, from the write column: twelve characters end there, or eleven while a line is
/// typed, so that its cursor fits.
int first_visible_column(const Machine& m);

} // namespace quillon
