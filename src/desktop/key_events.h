// From the toolkit's key events to the simulator's.
#pragma once

#include "shell/key_queue.h"

#include <QKeyEvent>

#include <array>
#include <optional>

namespace quillon {

/// A key press as the key queue takes it; nothing for keys that mean nothing to the machine. In ASCII mode a key that
/// types a character is handed over as that character, whatever the keyboard's layout; otherwise keys are named by
/// where they lie (by scan code), or by their symbol where the system does not tell that.
std::optional<KeyEvent> key_down_from(const QKeyEvent& event, bool ascii_mode);

/// The codes under which a key may have gone down: which one depended on mode and modifiers at that moment, so when it
/// comes up both do. 0 for none.
std::array<int, 2> key_codes_of(const QKeyEvent& event);

/// Follows the modifier keys: one that is pressed or released counts from then on.
void follow_modifiers(Modifiers& modifiers, const QKeyEvent& event);

} // namespace quillon
