// SPDX-License-Identifier: MIT
// The line editor: one line of at most 127 characters, typed for INPUT or in command mode.
#pragma once

namespace quillon {

struct Machine;

/// Applies the pending key to the entry and draws the display line anew. A key that is held acts once. Characters
/// overwrite; the cursor is `display_cursor`.
void edit_line(Machine& m);

} // namespace quillon
