// SPDX-License-Identifier: MIT
// From the toolkit's key events to the simulator's.
#pragma once

#include "shell/key_queue.h"

#include <QKeyEvent>

#include <optional>

namespace quillon {

/// A key press as the key queue takes it; nothing for keys that mean nothing to the machine. In ASCII mode a key that
/// types a character is handed over as that character, whatever the keyboard's layout; otherwise keys are named by
/// where they lie (by scan code), or by their symbol where the system does not tell that.
std::optional<KeyEvent> key_down_from(const QKeyEvent& event, bool ascii_mode);

/// Whether a key is one that other programs put on the letter that follows. The machine has no accents, so here it
/// types its own character at once.
bool is_dead_key(const QKeyEvent& event);

/// Follows the modifier keys: one that is pressed or released counts from then on.
void follow_modifiers(Modifiers& modifiers, const QKeyEvent& event);

} // namespace quillon
