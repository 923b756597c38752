// SPDX-License-Identifier: MIT
// INPUT: prompts, the entry of values, and asking again after an entry that is not acceptable.
#pragma once

namespace quillon {

struct Machine;

/// Handles the next element of an INPUT list. Called with `token` at the first one when the keyword is met, and by the
/// tick while the list is under way. A variable leaves the prompt waiting for the first key (KIND_PROMPT).
void input_statement(Machine& m);

/// One tick of STATE_INPUT: edits the entry, or with EXE takes it for the variable.
void input_entry_tick(Machine& m);

} // namespace quillon
